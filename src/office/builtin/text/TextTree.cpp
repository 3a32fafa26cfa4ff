#include "office/builtin/text/TextTree.h"

#include <algorithm>
#include <iterator>

#include "office/builtin/reader/Refusals.h"
#include "office/builtin/xml/XmlScanner.h"
#include "office/builtin/xml/XmlText.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

constexpr char16_t paragraphBreak = u'\r';
constexpr char16_t lineBreak = u'\v';

bool IsBlank(std::string_view gap)
{
    return gap.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

}  // namespace

TextTree::TextTree(const XmlDocument& document, Node body)
{
    const std::string_view xml = document.Bytes();
    for (const Node child : body.ChildElements()) {
        if (!IsParagraph(document, child))
            continue;
        const ElementRange range = document.RangeOf(child);
        if (paragraphs_.empty())
            begin_ = end_ = range.begin;
        Paragraph& paragraph = paragraphs_.emplace_back(ReadParagraph(document, child));
        paragraph.before = xml.substr(end_, range.begin - end_);
        end_ = range.end;
        shared_.AddMeanings(paragraph.scope, document, body);
        for (const TextPiece& piece : paragraph.pieces)
            shared_.AddMeanings(piece.scope, document, body);
    }
    if (paragraphs_.empty())
        begin_ = end_ = document.RangeOf(body).contentEnd;
}

TextTree::Paragraph TextTree::ReadParagraph(const XmlDocument& document, Node node)
{
    const std::string_view xml = document.Bytes();
    const ElementRange range = document.RangeOf(node);
    Paragraph paragraph{.open = std::string(xml.substr(range.begin, range.contentBegin - range.begin)),
                        .close = std::string(xml.substr(range.contentEnd, range.end - range.contentEnd)),
                        .prefix = std::string(range.Prefix())};
    paragraph.scope.Enter(document, node);
    std::size_t at = range.contentBegin;
    const auto keepGap = [&](std::size_t end) {
        if (end > at)
            paragraph.pieces.push_back({.kind = PieceKind::Gap, .bytes = std::string(xml.substr(at, end - at))});
    };
    for (const Node child : node.ChildElements()) {
        keepGap(document.OffsetOf(child));
        paragraph.pieces.push_back(TextPiece::Read(document, child));
        at = document.RangeOf(child).end;
    }
    keepGap(range.contentEnd);
    return paragraph;
}

String TextTree::Text() const
{
    String text;
    for (std::size_t p = 0; p < paragraphs_.size(); ++p) {
        if (p > 0)
            text += paragraphBreak;
        for (const TextPiece& piece : paragraphs_[p].pieces) {
            if (piece.kind == PieceKind::Break)
                text += lineBreak;
            else if (piece.length > 0)
                AppendContent(piece.Content(), text, InnerElements::Skipped);
        }
    }
    return text;
}

std::vector<ProtectedRange> TextTree::ProtectedRanges() const
{
    std::vector<ProtectedRange> ranges;
    std::size_t position = 0;
    for (const Paragraph& paragraph : paragraphs_) {
        for (const TextPiece& piece : paragraph.pieces) {
            if (piece.kind == PieceKind::Opaque || (piece.kind == PieceKind::VolatileField && piece.length > 0))
                ranges.push_back({position, piece.length});
            position += piece.length;
        }
        ++position;
    }
    return ranges;
}

std::string TextTree::Bytes() const
{
    std::string bytes;
    for (const Paragraph& paragraph : paragraphs_) {
        bytes += paragraph.before;
        bytes += paragraph.open;
        for (const TextPiece& piece : paragraph.pieces)
            bytes += piece.bytes;
        bytes += paragraph.close;
    }
    return bytes;
}

std::vector<LinkRecord> TextTree::Links(std::size_t body) const
{
    std::vector<LinkRecord> links;
    LinkJoiner joiner(links, body);
    std::size_t element = 0;
    for (const Paragraph& paragraph : paragraphs_) {
        joiner.BeginParagraph();
        for (const TextPiece& piece : paragraph.pieces) {
            if (!IsRun(piece.kind))
                continue;
            std::optional<LinkJoiner::Found> click;
            std::optional<LinkJoiner::Found> hover;
            for (const PieceLink& link : piece.links)
                (link.isHover ? hover : click).emplace(LinkJoiner::Found{link.target, element++});
            joiner.AddRun(piece.kind == PieceKind::Break, click, hover);
        }
    }
    return links;
}

void TextTree::Retarget(std::size_t element, const LinkTarget& target)
{
    const auto [piece, link] = FindLink(element);
    piece->Retarget(piece->links[link], target);
}

void TextTree::RemoveLink(std::size_t element)
{
    const auto [piece, link] = FindLink(element);
    piece->RemoveLink(link);
}

std::pair<TextPiece*, std::size_t> TextTree::FindLink(std::size_t element)
{
    for (Paragraph& paragraph : paragraphs_) {
        for (TextPiece& piece : paragraph.pieces) {
            const std::size_t count = IsRun(piece.kind) ? piece.links.size() : 0;
            if (element < count)
                return {&piece, element};
            element -= count;
        }
    }
    throw NoHyperlink();
}

void TextTree::Replace(std::size_t begin, std::size_t length, StringView with)
{
    if (paragraphs_.empty())
        throw Failure(FailureNumber::InvalidRequest, u"TextRange (unknown member) : Invalid request.");
    const Place anchor = Anchor(begin, length);
    const auto anchorPiece = [&]() -> TextPiece& { return paragraphs_[anchor.paragraph].pieces[anchor.piece]; };
    const std::size_t own = std::min(length, anchorPiece().length - anchor.offset);
    Remove({anchor.paragraph, anchor.piece + 1, 0}, length - own);
    if (with.find_first_of(u"\r\v") == StringView::npos) {
        anchorPiece().ReplaceUnits(anchor.offset, own, with);
    } else {
        anchorPiece().ReplaceUnits(anchor.offset, own, {});
        Insert(anchor, with);
    }
    DropIfEmpty(anchor);
}

/// The piece that holds a position; at a paragraph break or at the end, the place after the paragraph's last piece.
TextTree::Place TextTree::PlaceOf(std::size_t position) const
{
    for (std::size_t p = 0; p < paragraphs_.size(); ++p) {
        const auto& pieces = paragraphs_[p].pieces;
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            if (position < pieces[i].length)
                return {p, i, position};
            position -= pieces[i].length;
        }
        if (position == 0 || p + 1 == paragraphs_.size())
            return {p, pieces.size(), 0};
        --position;
    }
    return {};
}

/// The run that takes the new text, and the offset in it. A field becomes a run; where the text begins at a break or in
/// an empty paragraph, a new empty run is put there.
TextTree::Place TextTree::Anchor(std::size_t begin, std::size_t length)
{
    Place place = PlaceOf(begin);
    if (length == 0 && begin > 0) {
        // An insertion belongs to the text in front of it.
        const Place before = PlaceOf(begin - 1);
        const auto& pieces = paragraphs_[before.paragraph].pieces;
        if (before.piece < pieces.size() && pieces[before.piece].IsText())
            place = {before.paragraph, before.piece, before.offset + 1};
    }
    Paragraph& paragraph = paragraphs_[place.paragraph];
    if (place.piece < paragraph.pieces.size() && paragraph.pieces[place.piece].IsText()) {
        TurnIntoRun(paragraph.pieces[place.piece], paragraph);
        return place;
    }
    TextPiece run = MakeRun(PropertiesNear(place, length), {}, paragraph);
    Open(paragraph);
    if (place.piece == paragraph.pieces.size())
        place.piece = EndOfText(paragraph);
    paragraph.pieces.insert(paragraph.pieces.begin() + static_cast<std::ptrdiff_t>(place.piece), std::move(run));
    return {place.paragraph, place.piece, 0};
}

/// Run properties for text at a place where no run is: those of the next replaced run, else of the run before, else of
/// the paragraph's end.
RunProperties TextTree::PropertiesNear(const Place& place, std::size_t length) const
{
    std::size_t left = length;
    for (std::size_t p = place.paragraph; p < paragraphs_.size() && left > 0; ++p) {
        const auto& pieces = paragraphs_[p].pieces;
        for (std::size_t i = p == place.paragraph ? place.piece : 0; i < pieces.size() && left > 0; ++i) {
            if (pieces[i].IsText())
                return pieces[i].Properties(paragraphs_[p].scope);
            left -= std::min(left, pieces[i].length);
        }
        left -= std::min<std::size_t>(left, 1);
    }
    const std::vector<TextPiece>& pieces = paragraphs_[place.paragraph].pieces;
    const NamespaceScope& scope = paragraphs_[place.paragraph].scope;
    for (std::size_t i = std::min(place.piece, pieces.size()); i-- > 0;)
        if (pieces[i].kind == PieceKind::Run || pieces[i].IsText())  // a run may be empty, as in a footer to fill in
            return pieces[i].Properties(scope);
    for (const TextPiece& piece : pieces)
        if (piece.kind == PieceKind::EndProperties)
            return piece.Properties(scope);
    return {};
}

/// Removes text after the anchor.
void TextTree::Remove(Place from, std::size_t length)
{
    while (length > 0) {
        auto& pieces = paragraphs_[from.paragraph].pieces;
        if (from.piece >= pieces.size()) {
            if (from.paragraph + 1 >= paragraphs_.size())
                return;
            from.piece = JoinNextParagraph(from.paragraph);
            --length;
            continue;
        }
        TextPiece& piece = pieces[from.piece];
        if (piece.length == 0 || piece.length > length) {
            if (piece.length > 0) {
                TurnIntoRun(piece, paragraphs_[from.paragraph]);
                piece.ReplaceUnits(0, length, {});
                return;
            }
            ++from.piece;
            continue;
        }
        length -= piece.length;
        pieces.erase(pieces.begin() + static_cast<std::ptrdiff_t>(from.piece));
    }
}

/// Appends the pieces of the next paragraph and gives the index of the first of them. The properties of the first
/// paragraph hold for both, those of its end go when the next one has its own. What stood between the two, other than
/// white space, stays in front of both.
std::size_t TextTree::JoinNextParagraph(std::size_t paragraph)
{
    const auto at = static_cast<std::ptrdiff_t>(paragraph);
    Paragraph next = std::move(paragraphs_[paragraph + 1]);
    paragraphs_.erase(paragraphs_.begin() + at + 1);
    Paragraph& joined = paragraphs_[paragraph];
    if (!IsBlank(next.before))
        joined.before += next.before;
    auto& pieces = joined.pieces;

    std::vector<TextPiece> ending;
    while (!pieces.empty() &&
           (pieces.back().kind == PieceKind::EndProperties || pieces.back().kind == PieceKind::Gap)) {
        ending.insert(ending.begin(), std::move(pieces.back()));
        pieces.pop_back();
    }
    const std::size_t joint = pieces.size();
    const bool hasEnd =
        std::ranges::any_of(next.pieces, [](const TextPiece& piece) { return piece.kind == PieceKind::EndProperties; });
    for (TextPiece& piece : next.pieces) {
        if (piece.kind == PieceKind::Properties)
            continue;
        if (piece.kind != PieceKind::Gap)
            piece.Declare(next.scope.NeededIn(joined.scope, shared_, piece.bytes));
        pieces.push_back(std::move(piece));
    }
    if (!hasEnd)
        std::ranges::move(ending, std::back_inserter(pieces));
    return joint;
}

void TextTree::Insert(Place at, StringView with)
{
    const RunProperties properties =
        paragraphs_[at.paragraph].pieces[at.piece].Properties(paragraphs_[at.paragraph].scope);
    {
        auto& pieces = paragraphs_[at.paragraph].pieces;
        TextPiece& anchor = pieces[at.piece];
        if (anchor.length > at.offset) {
            TextPiece rest = anchor;
            rest.ReplaceUnits(0, at.offset, {});
            anchor.ReplaceUnits(at.offset, anchor.length - at.offset, {});
            pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(at.piece) + 1, std::move(rest));
        }
    }

    const Place first = at;
    const std::size_t firstBreak = with.find_first_of(u"\r\v");
    paragraphs_[at.paragraph].pieces[at.piece].ReplaceUnits(at.offset, 0, with.substr(0, firstBreak));
    std::size_t next = at.piece + 1;  // where the following piece goes
    const auto put = [&](TextPiece piece) {
        auto& pieces = paragraphs_[at.paragraph].pieces;
        pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(next), std::move(piece));
        ++next;
    };
    for (std::size_t i = firstBreak; i < with.size();) {
        if (with[i] == lineBreak) {
            put(MakeBreak(properties, paragraphs_[at.paragraph]));
        } else {
            next = SplitParagraph(at.paragraph, next);
            if (at.paragraph != first.paragraph)
                KeepHeight(paragraphs_[at.paragraph], properties);
            ++at.paragraph;
        }
        const std::size_t end = std::min(with.find_first_of(u"\r\v", i + 1), with.size());
        if (end > i + 1)
            put(MakeRun(properties, with.substr(i + 1, end - i - 1), paragraphs_[at.paragraph]));
        i = end;
    }
    if (at.paragraph != first.paragraph)
        KeepHeight(paragraphs_[at.paragraph], properties);
}

/// Moves the pieces from an index on into a new paragraph with the same properties; gives the index after these.
std::size_t TextTree::SplitParagraph(std::size_t paragraph, std::size_t from)
{
    auto& pieces = paragraphs_[paragraph].pieces;
    Paragraph second{.open = paragraphs_[paragraph].open,  // which may declare namespaces
                     .close = paragraphs_[paragraph].close,
                     .prefix = paragraphs_[paragraph].prefix,
                     .scope = paragraphs_[paragraph].scope};
    for (const TextPiece& piece : pieces)
        if (piece.kind == PieceKind::Properties)
            second.pieces.push_back(piece);
    const std::size_t afterProperties = second.pieces.size();
    const auto start = pieces.begin() + static_cast<std::ptrdiff_t>(from);
    std::move(start, pieces.end(), std::back_inserter(second.pieces));
    pieces.erase(start, pieces.end());
    paragraphs_.insert(paragraphs_.begin() + static_cast<std::ptrdiff_t>(paragraph) + 1, std::move(second));
    return afterProperties;
}

/// A run without text goes; as the paragraph's only one it leaves its properties as those of the paragraph's end.
void TextTree::DropIfEmpty(const Place& anchor)
{
    Paragraph& paragraph = paragraphs_[anchor.paragraph];
    const auto run = paragraph.pieces.begin() + static_cast<std::ptrdiff_t>(anchor.piece);
    if (run->length > 0)
        return;
    const RunProperties properties = run->Properties(paragraph.scope);
    paragraph.pieces.erase(run);
    KeepHeight(paragraph, properties);
}

/// A line without text has the height that the properties of its paragraph's end say.
void TextTree::KeepHeight(Paragraph& paragraph, RunProperties properties) const
{
    const auto saysHeight = [](const TextPiece& piece) {
        return piece.IsText() || piece.kind == PieceKind::EndProperties;
    };
    if (properties.bytes.empty() || std::ranges::any_of(paragraph.pieces, saysHeight))
        return;
    properties.DropLinks();
    Adapt(properties, "endParaRPr", paragraph.scope);
    // After white space and anything else: the end properties are a paragraph's last child.
    TextPiece end{.kind = PieceKind::EndProperties, .bytes = std::move(properties.bytes)};
    end.properties = {0, end.bytes.size()};
    paragraph.pieces.push_back(std::move(end));
}

std::size_t TextTree::EndOfText(const Paragraph& paragraph)
{
    const auto end = std::ranges::find(paragraph.pieces, PieceKind::EndProperties, &TextPiece::kind);
    return static_cast<std::size_t>(end - paragraph.pieces.begin());
}

/// Gives a paragraph that is an empty-element tag an end tag.
void TextTree::Open(Paragraph& paragraph)
{
    if (!paragraph.close.empty())
        return;
    paragraph.open = paragraph.open.substr(0, paragraph.open.rfind('/')) + ">";
    paragraph.close = "</" + paragraph.prefix + "p>";
}

/// Gives run properties another local name, and what they need to mean the same in another scope.
void TextTree::Adapt(RunProperties& properties, std::string_view localName, const NamespaceScope& scope) const
{
    const ElementRange range = ScanElement(properties.bytes, 0);
    const std::string name = std::string(range.Prefix()) + std::string(localName);
    const std::string declarations = properties.scope.NeededIn(scope, shared_, properties.bytes).Attributes();
    const std::size_t nameEnd = 1 + range.name.size();
    std::string adapted = "<" + name + declarations;
    const std::size_t newNameEnd = adapted.size();
    if (range.IsEmptyTag())
        adapted += properties.bytes.substr(nameEnd);
    else
        adapted += properties.bytes.substr(nameEnd, range.contentEnd + 2 - nameEnd) + name +
                   properties.bytes.substr(range.contentEnd + 2 + range.name.size());
    for (PieceLink& link : properties.links) {
        link.place.begin = link.place.begin - nameEnd + newNameEnd;
        link.place.end = link.place.end - nameEnd + newNameEnd;
    }
    properties.bytes = std::move(adapted);
    properties.scope = scope;
}

/// A run or break of a paragraph that begins with properties: all of it but the text and the end tag.
TextPiece TextTree::MakePiece(PieceKind kind, std::string_view open, RunProperties properties,
                              const NamespaceScope& scope) const
{
    TextPiece piece{.kind = kind, .bytes = std::string(open)};
    if (properties.bytes.empty())
        return piece;
    Adapt(properties, "rPr", scope);
    const std::size_t begin = piece.bytes.size();
    piece.bytes += properties.bytes;
    piece.properties = {begin, piece.bytes.size()};
    piece.links = std::move(properties.links);
    for (PieceLink& link : piece.links) {
        link.place.begin += begin;
        link.place.end += begin;
    }
    return piece;
}

TextPiece TextTree::MakeRun(RunProperties properties, StringView text, const Paragraph& paragraph) const
{
    const std::string& prefix = paragraph.prefix;
    TextPiece piece = MakePiece(PieceKind::Run, "<" + prefix + "r>", std::move(properties), paragraph.scope);
    piece.bytes += "<" + prefix + "t>";
    piece.content.begin = piece.bytes.size();
    piece.bytes += EscapeRunText(text);
    piece.content.end = piece.bytes.size();
    piece.bytes += "</" + prefix + "t></" + prefix + "r>";
    piece.length = text.size();
    return piece;
}

TextPiece TextTree::MakeBreak(RunProperties properties, const Paragraph& paragraph) const
{
    const std::string name = paragraph.prefix + "br";
    const bool isEmpty = properties.bytes.empty();
    TextPiece piece =
        MakePiece(PieceKind::Break, "<" + name + (isEmpty ? "/>" : ">"), std::move(properties), paragraph.scope);
    piece.length = 1;
    if (!isEmpty)
        piece.bytes += "</" + name + ">";
    return piece;
}

/// A field that text is put into becomes a run with the same characters, as they are written.
void TextTree::TurnIntoRun(TextPiece& piece, const Paragraph& paragraph) const
{
    if (piece.kind == PieceKind::Run)
        return;
    TextPiece run = MakeRun(piece.Properties(paragraph.scope), {}, paragraph);
    std::string characters(piece.Content());
    if (piece.hasElementsInContent) {  // which may need what the field declares
        String text;
        AppendContent(characters, text, InnerElements::Skipped);
        characters = EscapeRunText(text);
    }
    run.bytes.insert(run.content.begin, characters);
    run.content.end += characters.size();
    run.length = piece.length;
    piece = std::move(run);
}

}  // namespace tessarine::builtin
