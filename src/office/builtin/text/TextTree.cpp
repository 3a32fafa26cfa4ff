#include "office/builtin/text/TextTree.h"

#include <algorithm>
#include <iterator>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/xml/XmlScanner.h"
#include "office/builtin/xml/XmlText.h"

namespace tessarine::builtin
{

namespace
{

constexpr char16_t paragraphBreak = u'\r';
constexpr char16_t lineBreak = u'\v';

bool IsVolatileFieldType(std::string_view type)
{
    return type == "slidenum" || type.starts_with("datetime");
}

String ReadText(std::string_view content)
{
    String text;
    AppendContent(content, text);
    return text;
}

/// The first child of an element with a local name; `found` false when there is none.
struct FoundChild {
    ElementRange range;
    bool found = false;
};

FoundChild ChildNamed(std::string_view xml, const ElementRange& parent, std::string_view localName)
{
    for (std::size_t at = NextChild(xml, parent.contentBegin, parent.contentEnd); at < parent.contentEnd;) {
        const ElementRange child = ScanElement(xml, at);
        if (LocalName(child.name) == localName)
            return {child, true};
        at = NextChild(xml, child.end, parent.contentEnd);
    }
    return {};
}

/// The same element under another local name.
std::string Renamed(std::string_view element, std::string_view localName)
{
    const ElementRange range = ScanElement(element, 0);
    if (LocalName(range.name) == localName)
        return std::string(element);
    const std::string name = std::string(range.Prefix()) + std::string(localName);
    std::string renamed = "<" + name;
    const std::size_t behindName = 1 + range.name.size();
    if (range.IsEmptyTag())
        return renamed.append(element.substr(behindName));
    renamed += element.substr(behindName, range.contentEnd - behindName);
    return renamed + "</" + name + ">";
}

/// Run properties without their hyperlinks: a link goes with its text.
std::string WithoutLinks(std::string properties)
{
    for (const std::string_view name : {"hlinkClick", "hlinkMouseOver"}) {
        const FoundChild link = ChildNamed(properties, ScanElement(properties, 0), name);
        if (link.found)
            properties.erase(link.range.begin, link.range.end - link.range.begin);
    }
    return properties;
}

/// True when content is well-formed and reads as the text. Only the end mark of CDATA, an escape and, behind an "&"
/// that began none, a reference can come about where none was.
bool Holds(std::string_view content, StringView text)
{
    if (content.find("]]>") == std::string_view::npos && content.find('&') == std::string_view::npos &&
        text.find(u"_x00") == StringView::npos)
        return true;
    try {
        const std::vector<ContentUnit> units = ContentUnits(content);
        for (std::size_t i = 2; i < units.size(); ++i)
            if (!units[i].inCData && content.substr(units[i - 2].begin, units[i].end - units[i - 2].begin) == "]]>")
                return false;
        return std::ranges::equal(units, text, {}, &ContentUnit::unit);
    } catch (const Failure&) {
        return false;  // CDATA that ends too early leaves its text as markup
    }
}

}  // namespace

TextTree::TextTree(std::string_view xml, std::size_t body)
{
    // Front to back, each element once: what is inside is not looked for again from outside.
    const StartTag tag = ReadStartTag(xml, body);
    std::size_t at = tag.isEmpty ? tag.end : NextTag(xml, tag.end);
    while (!tag.isEmpty && !IsEndTag(xml, at)) {
        const StartTag child = ReadStartTag(xml, at);
        std::size_t behind = 0;
        if (LocalName(child.name) == "p") {
            if (paragraphs_.empty()) {
                begin_ = end_ = at;
                prefix_ = child.name.substr(0, child.name.size() - 1);
            }
            Paragraph paragraph = ReadParagraph(xml, child, behind);
            paragraph.before = xml.substr(end_, at - end_);
            paragraphs_.push_back(std::move(paragraph));
            end_ = behind;
        } else {
            behind = ScanElement(xml, at).end;
        }
        at = NextTag(xml, behind);
    }
    if (paragraphs_.empty())
        begin_ = end_ = at;
}

TextTree::Paragraph TextTree::ReadParagraph(std::string_view xml, const StartTag& tag, std::size_t& end)
{
    Paragraph paragraph;
    paragraph.open = xml.substr(tag.begin, tag.end - tag.begin);
    end = tag.end;
    if (tag.isEmpty)
        return paragraph;
    std::size_t at = NextTag(xml, end);
    const auto keepGap = [&] {
        if (at > end)
            paragraph.pieces.push_back({.kind = Kind::Other, .bytes = std::string(xml.substr(end, at - end))});
    };
    for (; !IsEndTag(xml, at); at = NextTag(xml, end)) {
        keepGap();
        paragraph.pieces.push_back(ReadPiece(xml, at, end));
    }
    keepGap();
    end = BehindTag(xml, at);
    paragraph.close = xml.substr(at, end - at);
    return paragraph;
}

TextTree::Piece TextTree::ReadPiece(std::string_view xml, std::size_t at, std::size_t& end)
{
    const StartTag tag = ReadStartTag(xml, at);
    const std::string_view name = LocalName(tag.name);
    const bool isRun = name == "r" || name == "fld";
    ElementRange text;  // the first a:t; none while it ends at 0
    if (isRun && !tag.isEmpty) {
        end = NextTag(xml, tag.end);
        while (!IsEndTag(xml, end)) {
            const ElementRange child = ScanElement(xml, end);
            if (text.end == 0 && LocalName(child.name) == "t")
                text = child;
            end = NextTag(xml, child.end);
        }
        end = BehindTag(xml, end);
    } else {
        end = ScanElement(xml, at).end;
    }

    Piece piece{.bytes = std::string(xml.substr(at, end - at))};
    if (isRun) {
        piece.kind = Kind::Run;
        if (name == "fld") {
            const AttributeRange type = FindAttribute(xml, at, "type");
            const bool isVolatile =
                type.found && IsVolatileFieldType(xml.substr(type.valueBegin, type.valueEnd - type.valueBegin));
            piece.kind = isVolatile ? Kind::VolatileField : Kind::Field;
        }
        if (text.end != 0 && !text.IsEmptyTag()) {
            piece.contentBegin = text.contentBegin - at;
            piece.contentEnd = text.contentEnd - at;
            piece.length = ReadText(piece.Content()).size();
        }
    } else if (name == "br") {
        piece.kind = Kind::Break;
        piece.length = 1;
    } else if (name == "pPr") {
        piece.kind = Kind::Properties;
    } else if (name == "endParaRPr") {
        piece.kind = Kind::EndProperties;
    } else {
        piece.kind = Kind::Opaque;
    }
    return piece;
}

String TextTree::Text() const
{
    String text;
    for (std::size_t p = 0; p < paragraphs_.size(); ++p) {
        if (p > 0)
            text += paragraphBreak;
        for (const Piece& piece : paragraphs_[p].pieces) {
            if (piece.kind == Kind::Break)
                text += lineBreak;
            else if (piece.length > 0)
                AppendContent(piece.Content(), text);
        }
    }
    return text;
}

std::vector<ProtectedRange> TextTree::ProtectedRanges() const
{
    std::vector<ProtectedRange> ranges;
    std::size_t position = 0;
    for (const Paragraph& paragraph : paragraphs_) {
        for (const Piece& piece : paragraph.pieces) {
            if (piece.kind == Kind::Opaque || (piece.kind == Kind::VolatileField && piece.length > 0))
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
        for (const Piece& piece : paragraph.pieces)
            bytes += piece.bytes;
        bytes += paragraph.close;
    }
    return bytes;
}

void TextTree::Replace(std::size_t begin, std::size_t length, StringView with)
{
    if (paragraphs_.empty())
        throw Failure(FailureNumber::InvalidRequest, u"TextRange (unknown member) : Invalid request.");
    const Place anchor = Anchor(begin, length);
    const auto anchorPiece = [&]() -> Piece& { return paragraphs_[anchor.paragraph].pieces[anchor.piece]; };
    const std::size_t own = std::min(length, anchorPiece().length - anchor.offset);
    Remove({anchor.paragraph, anchor.piece + 1, 0}, length - own);
    if (with.find_first_of(u"\r\v") == StringView::npos) {
        ReplaceUnits(anchorPiece(), anchor.offset, own, with);
    } else {
        ReplaceUnits(anchorPiece(), anchor.offset, own, {});
        Insert(anchor, with);
    }
    DropIfEmpty(anchor);
}

/// The piece that holds a position; at a paragraph break or at the end, the place behind the paragraph's last piece.
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
        if (before.piece < pieces.size() && IsText(pieces[before.piece]))
            place = {before.paragraph, before.piece, before.offset + 1};
    }
    Paragraph& paragraph = paragraphs_[place.paragraph];
    if (place.piece < paragraph.pieces.size() && IsText(paragraph.pieces[place.piece])) {
        TurnIntoRun(paragraph.pieces[place.piece]);
        return place;
    }
    Piece run = MakeRun(PropertiesNear(place, length), {});
    Open(paragraph);
    if (place.piece == paragraph.pieces.size())
        place.piece = EndOfText(paragraph);
    paragraph.pieces.insert(paragraph.pieces.begin() + static_cast<std::ptrdiff_t>(place.piece), std::move(run));
    return {place.paragraph, place.piece, 0};
}

/// Run properties for text at a place where no run is: those of the next replaced run, else of the run before, else of
/// the paragraph's end.
std::string TextTree::PropertiesNear(const Place& place, std::size_t length) const
{
    std::size_t left = length;
    for (std::size_t p = place.paragraph; p < paragraphs_.size() && left > 0; ++p) {
        const auto& pieces = paragraphs_[p].pieces;
        for (std::size_t i = p == place.paragraph ? place.piece : 0; i < pieces.size() && left > 0; ++i) {
            if (IsText(pieces[i]))
                return PropertiesOf(pieces[i]);
            left -= std::min(left, pieces[i].length);
        }
        left -= std::min<std::size_t>(left, 1);
    }
    const auto& pieces = paragraphs_[place.paragraph].pieces;
    for (std::size_t i = std::min(place.piece, pieces.size()); i-- > 0;)
        if (pieces[i].kind == Kind::Run || IsText(pieces[i]))  // a run may be empty, as in a footer to be filled in
            return PropertiesOf(pieces[i]);
    for (const Piece& piece : pieces)
        if (piece.kind == Kind::EndProperties)
            return PropertiesOf(piece);
    return {};
}

/// Removes text behind the anchor.
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
        Piece& piece = pieces[from.piece];
        if (piece.length == 0 || piece.length > length) {
            if (piece.length > 0) {
                TurnIntoRun(piece);
                ReplaceUnits(piece, 0, length, {});
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
/// paragraph hold for both, those of its end go when the next one has its own.
std::size_t TextTree::JoinNextParagraph(std::size_t paragraph)
{
    const auto at = static_cast<std::ptrdiff_t>(paragraph);
    Paragraph next = std::move(paragraphs_[paragraph + 1]);
    paragraphs_.erase(paragraphs_.begin() + at + 1);
    auto& pieces = paragraphs_[paragraph].pieces;

    std::vector<Piece> ending;
    while (!pieces.empty() && (pieces.back().kind == Kind::EndProperties || pieces.back().kind == Kind::Other)) {
        ending.insert(ending.begin(), std::move(pieces.back()));
        pieces.pop_back();
    }
    const std::size_t joint = pieces.size();
    const bool hasEnd =
        std::ranges::any_of(next.pieces, [](const Piece& piece) { return piece.kind == Kind::EndProperties; });
    for (Piece& piece : next.pieces)
        if (piece.kind != Kind::Properties)
            pieces.push_back(std::move(piece));
    if (!hasEnd)
        std::ranges::move(ending, std::back_inserter(pieces));
    return joint;
}

void TextTree::Insert(Place at, StringView with)
{
    const std::string properties = PropertiesOf(paragraphs_[at.paragraph].pieces[at.piece]);
    {
        auto& pieces = paragraphs_[at.paragraph].pieces;
        Piece& anchor = pieces[at.piece];
        if (anchor.length > at.offset) {
            Piece rest = anchor;
            ReplaceUnits(rest, 0, at.offset, {});
            ReplaceUnits(anchor, at.offset, anchor.length - at.offset, {});
            pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(at.piece) + 1, std::move(rest));
        }
    }

    const Place first = at;
    const std::size_t firstBreak = with.find_first_of(u"\r\v");
    ReplaceUnits(paragraphs_[at.paragraph].pieces[at.piece], at.offset, 0, with.substr(0, firstBreak));
    std::size_t next = at.piece + 1;  // where the following piece goes
    const auto put = [&](Piece piece) {
        auto& pieces = paragraphs_[at.paragraph].pieces;
        pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(next), std::move(piece));
        ++next;
    };
    for (std::size_t i = firstBreak; i < with.size();) {
        if (with[i] == lineBreak) {
            put(MakeBreak(properties));
        } else {
            next = SplitParagraph(at.paragraph, next);
            if (at.paragraph != first.paragraph)
                KeepHeight(paragraphs_[at.paragraph], properties);
            ++at.paragraph;
        }
        const std::size_t end = std::min(with.find_first_of(u"\r\v", i + 1), with.size());
        if (end > i + 1)
            put(MakeRun(properties, with.substr(i + 1, end - i - 1)));
        i = end;
    }
    if (at.paragraph != first.paragraph)
        KeepHeight(paragraphs_[at.paragraph], properties);
}

/// Moves the pieces from an index on into a new paragraph with the same properties; gives the index behind these.
std::size_t TextTree::SplitParagraph(std::size_t paragraph, std::size_t from)
{
    auto& pieces = paragraphs_[paragraph].pieces;
    Paragraph second;
    second.open = paragraphs_[paragraph].open;  // which may declare namespaces
    second.close = paragraphs_[paragraph].close;
    for (const Piece& piece : pieces)
        if (piece.kind == Kind::Properties)
            second.pieces.push_back(piece);
    const std::size_t behindProperties = second.pieces.size();
    const auto start = pieces.begin() + static_cast<std::ptrdiff_t>(from);
    std::move(start, pieces.end(), std::back_inserter(second.pieces));
    pieces.erase(start, pieces.end());
    paragraphs_.insert(paragraphs_.begin() + static_cast<std::ptrdiff_t>(paragraph) + 1, std::move(second));
    return behindProperties;
}

/// A run without text goes; as the paragraph's only one it leaves its properties as those of the paragraph's end.
void TextTree::DropIfEmpty(const Place& anchor)
{
    Paragraph& paragraph = paragraphs_[anchor.paragraph];
    const auto run = paragraph.pieces.begin() + static_cast<std::ptrdiff_t>(anchor.piece);
    if (run->length > 0)
        return;
    const std::string properties = PropertiesOf(*run);
    paragraph.pieces.erase(run);
    KeepHeight(paragraph, properties);
}

/// A line without text has the height that the properties of its paragraph's end say.
void TextTree::KeepHeight(Paragraph& paragraph, std::string_view properties)
{
    const auto saysHeight = [](const Piece& piece) { return IsText(piece) || piece.kind == Kind::EndProperties; };
    if (properties.empty() || std::ranges::any_of(paragraph.pieces, saysHeight))
        return;
    // Behind white space and anything else: the end properties are a paragraph's last child.
    paragraph.pieces.push_back(
        {.kind = Kind::EndProperties, .bytes = Renamed(WithoutLinks(std::string(properties)), "endParaRPr")});
}

std::size_t TextTree::EndOfText(const Paragraph& paragraph)
{
    const auto end = std::ranges::find(paragraph.pieces, Kind::EndProperties, &Piece::kind);
    return static_cast<std::size_t>(end - paragraph.pieces.begin());
}

/// Gives a paragraph that is an empty-element tag an end tag.
void TextTree::Open(Paragraph& paragraph) const
{
    if (!paragraph.close.empty())
        return;
    paragraph.open = paragraph.open.substr(0, paragraph.open.rfind('/')) + ">";
    paragraph.close = "</" + prefix_ + "p>";
}

TextTree::Piece TextTree::MakeRun(std::string_view properties, StringView text) const
{
    Piece piece{.kind = Kind::Run, .bytes = "<" + prefix_ + "r>", .length = text.size()};
    piece.bytes += properties.empty() ? std::string() : Renamed(properties, "rPr");
    piece.bytes += "<" + prefix_ + "t>";
    piece.contentBegin = piece.bytes.size();
    piece.bytes += EscapeRunText(text);
    piece.contentEnd = piece.bytes.size();
    piece.bytes += "</" + prefix_ + "t></" + prefix_ + "r>";
    return piece;
}

TextTree::Piece TextTree::MakeBreak(std::string_view properties) const
{
    const std::string name = prefix_ + "br";
    if (properties.empty())
        return {.kind = Kind::Break, .bytes = "<" + name + "/>", .length = 1};
    return {.kind = Kind::Break, .bytes = "<" + name + ">" + std::string(properties) + "</" + name + ">", .length = 1};
}

/// The bytes of a piece's run properties; "" when it has none.
std::string TextTree::PropertiesOf(const Piece& piece)
{
    if (piece.kind == Kind::EndProperties)
        return piece.bytes;
    const FoundChild properties = ChildNamed(piece.bytes, ScanElement(piece.bytes, 0), "rPr");
    if (!properties.found)
        return {};
    return piece.bytes.substr(properties.range.begin, properties.range.end - properties.range.begin);
}

void TextTree::TurnIntoRun(Piece& piece) const
{
    if (piece.kind == Kind::Run)
        return;
    Piece run = MakeRun(PropertiesOf(piece), {});
    const std::string content(piece.Content());
    run.bytes.insert(run.contentBegin, content);
    run.contentEnd += content.size();
    run.length = piece.length;
    piece = std::move(run);
}

/// Replaces units of a piece's content in its bytes. What stands between the replaced characters (CDATA marks,
/// comments) stays, unless the characters that come together mean something else there: then the content is written
/// anew.
void TextTree::ReplaceUnits(Piece& piece, std::size_t offset, std::size_t length, StringView with)
{
    if (length == 0 && with.empty())
        return;
    const std::string content(piece.Content());
    const std::vector<ContentUnit> units = ContentUnits(content);
    if (offset + length > units.size())
        throw Damage({}, "a text run is not what it was");

    // The insertion stands before the first replaced unit, or behind the unit in front of it.
    const bool before = offset < units.size();
    const bool hasPlace = before || offset > 0;
    const ContentUnit* place = hasPlace ? &units[before ? offset : offset - 1] : nullptr;
    const std::size_t at = place == nullptr ? content.size() : before ? place->begin : place->end;
    std::string inserted = EscapeRunText(with);
    if (place != nullptr && place->inCData && !inserted.empty())
        inserted = "]]>" + inserted + "<![CDATA[";

    std::string result = content.substr(0, at) + inserted;
    std::size_t copied = at;
    for (std::size_t i = offset; i < offset + length; ++i) {
        if (units[i].begin > copied)
            result.append(content, copied, units[i].begin - copied);
        copied = std::max(copied, units[i].end);
    }
    result.append(content, copied);

    String wanted;
    for (const ContentUnit& unit : units)
        wanted += unit.unit;
    wanted.replace(offset, length, with);
    if (!Holds(result, wanted))
        result = EscapeRunText(wanted);

    piece.bytes.replace(piece.contentBegin, content.size(), result);
    piece.contentEnd = piece.contentBegin + result.size();
    piece.length = units.size() - length + with.size();
}

}  // namespace tessarine::builtin
