#include "office/builtin/text/TextTree.h"

#include <algorithm>
#include <optional>

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

constexpr std::size_t noPlace = static_cast<std::size_t>(-1);

// In pieces. Where a paragraph has so many without text, an insertion looks for properties to take no further.
constexpr std::size_t farthestLook = 1000;
// In pieces. Programs write one a:endParaRPr, perhaps with white space around it.
constexpr std::size_t mostEndings = 8;

bool IsBlank(std::string_view gap)
{
    return gap.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// Offsets and lengths in a part fit into 32 bits (see XmlDocument).
std::uint32_t Offset(std::size_t value)
{
    return static_cast<std::uint32_t>(value);
}

}  // namespace

TextTree::TextTree(const XmlDocument& document, Node body) : document_(document), body_(body)
{
    std::size_t count = 0;
    for (const Node child : body.ChildElements())
        if (IsParagraph(document, child)) {
            ++count;
            for ([[maybe_unused]] const Node piece : child.ChildElements())
                ++count;
        }
    std::vector<Item> items;
    items.reserve(count + count / 2);  // with some of what stands between elements

    String text;
    for (const Node child : body.ChildElements()) {
        if (!IsParagraph(document, child))
            continue;
        const ElementRange range = document.RangeOf(child);
        if (items.empty())
            begin_ = end_ = range.begin;
        const std::size_t paragraph = items.size();
        items.push_back({.isParagraph = true, .begin = Offset(end_), .end = Offset(range.begin)});
        std::size_t at = range.contentBegin;
        const auto keepGap = [&](std::size_t end) {
            if (end > at)
                items.push_back({.kind = PieceKind::Gap, .begin = Offset(at), .end = Offset(end)});
        };
        for (const Node element : child.ChildElements()) {
            const ElementRange piece = document.RangeOf(element);
            keepGap(piece.begin);
            Item item{.kind = KindOf(document, element), .begin = Offset(piece.begin), .end = Offset(piece.end)};
            if (item.kind == PieceKind::Break) {
                item.length = 1;
            } else if (IsRun(item.kind)) {
                text.clear();
                document.AppendTextOf(CharactersOf(document, element), text);
                item.length = Offset(text.size());
            }
            items[paragraph].length += item.SaysHeight() ? 1 : 0;
            items.push_back(std::move(item));
            at = piece.end;
        }
        keepGap(range.contentEnd);
        end_ = range.end;
    }
    if (items.empty())
        begin_ = end_ = document.RangeOf(body).contentEnd;
    items_ = GapBuffer(std::move(items));
}

/// One text may add no more than a whole presentation may: a paragraph's properties may be large, and so may be the
/// number of paragraphs that are put in.
void TextTree::Grow(std::size_t bytes)
{
    growth_ += bytes;
    if (growth_ > Limits::Default().grownBytes)
        throw Failure(FailureNumber::BadFormat, u"The changed text would make the presentation too large");
}

/// The tags of a paragraph, with a copy of their bytes.
TextTree::Paragraph& TextTree::Touch(std::size_t paragraph)
{
    Item& item = items_[paragraph];
    if (!item.paragraph) {
        const std::string_view xml = document_.Bytes();
        const Node node = NodeOf(item);
        const ElementRange range = document_.RangeOf(node);
        item.paragraph = std::make_unique<Paragraph>(
            Paragraph{.before = std::string(xml.substr(item.begin, item.end - item.begin)),
                      .open = std::string(xml.substr(range.begin, range.contentBegin - range.begin)),
                      .close = std::string(xml.substr(range.contentEnd, range.end - range.contentEnd)),
                      .prefix = std::string(range.Prefix())});
        item.paragraph->scope.Enter(document_, node);
    }
    return *item.paragraph;
}

/// A piece with a copy of its bytes.
TextPiece& TextTree::TouchPiece(std::size_t at)
{
    Item& item = items_[at];
    if (!item.piece) {
        if (item.kind == PieceKind::Gap)
            item.piece = std::make_unique<TextPiece>(
                TextPiece{.bytes = std::string(document_.Bytes().substr(item.begin, item.end - item.begin))});
        else
            item.piece = std::make_unique<TextPiece>(TextPiece::Read(document_, NodeOf(item)));
    }
    return *item.piece;
}

/// Puts a piece in front of an item of the paragraph that the cursor is in.
void TextTree::PutPiece(std::size_t at, TextPiece piece)
{
    Item item{.kind = piece.kind, .length = Offset(piece.length)};
    item.piece = std::make_unique<TextPiece>(std::move(piece));
    items_[cursor_.paragraph].length += item.SaysHeight() ? 1 : 0;
    items_.Insert(at, std::move(item));
}

void TextTree::ErasePiece(std::size_t at)
{
    const Item& item = items_[at];
    items_[cursor_.paragraph].length -= item.SaysHeight() ? 1 : 0;
    std::ranges::replace(opened_, item.piece.get(), nullptr);
    items_.Erase(at);
}

void TextTree::ReplaceUnits(std::size_t at, std::size_t offset, std::size_t count, StringView with)
{
    TextPiece& piece = TouchPiece(at);
    // Edited content takes several times the memory of its bytes. A hit touches two pieces, and the next hit begins
    // in one of them.
    const auto known = std::ranges::find(opened_, &piece);
    const auto place = known == opened_.end() ? opened_.end() - 1 : known;
    if (known == opened_.end() && *place != nullptr)
        (*place)->Close();
    std::rotate(opened_.begin(), place, place + 1);
    opened_.front() = &piece;

    const bool saidHeight = items_[at].SaysHeight();
    piece.ReplaceUnits(offset, count, with);
    Grow(with.size());
    Item& item = items_[at];
    item.length = Offset(piece.length);
    items_[cursor_.paragraph].length += (item.SaysHeight() ? 1u : 0u) - (saidHeight ? 1u : 0u);
}

void TextTree::AppendText(const Item& item, String& text) const
{
    if (item.kind == PieceKind::Break) {
        text += lineBreak;
    } else if (item.piece) {
        std::string content;
        item.piece->AppendContent(content);
        AppendContent(content, text, InnerElements::Skipped);
    } else {
        document_.AppendTextOf(CharactersOf(document_, NodeOf(item)), text);
    }
}

String TextTree::Text() const
{
    String text;
    for (std::size_t i = 0; i < items_.Size(); ++i) {
        const Item& item = items_[i];
        if (item.isParagraph) {
            if (i > 0)
                text += paragraphBreak;
        } else if (item.length > 0) {
            AppendText(item, text);
        }
    }
    return text;
}

bool TextTree::Holds(StringView text) const
{
    String own;
    for (std::size_t i = 0; i < items_.Size(); ++i) {
        const Item& item = items_[i];
        own.clear();
        if (item.isParagraph) {
            if (i > 0)
                own += paragraphBreak;
        } else if (item.length > 0) {
            AppendText(item, own);
        }
        if (!text.starts_with(own))
            return false;
        text.remove_prefix(own.size());
    }
    return text.empty();
}

std::vector<ProtectedRange> TextTree::ProtectedRanges() const
{
    std::vector<ProtectedRange> ranges;
    std::size_t position = 0;
    for (std::size_t i = 0; i < items_.Size(); ++i) {
        const Item& item = items_[i];
        if (item.isParagraph) {
            position += i > 0 ? 1 : 0;
            continue;
        }
        if (item.kind == PieceKind::Opaque || (item.kind == PieceKind::VolatileField && item.length > 0))
            ranges.push_back({position, item.length});
        position += item.length;
    }
    return ranges;
}

std::string TextTree::Bytes() const
{
    const std::string_view xml = document_.Bytes();
    std::string bytes;
    bytes.reserve(end_ - begin_ + growth_);
    const auto close = [&](std::size_t paragraph) {
        const Item& item = items_[paragraph];
        if (item.paragraph) {
            bytes += item.paragraph->close;
        } else {
            const ElementRange range = document_.RangeOf(NodeOf(item));
            bytes += xml.substr(range.contentEnd, range.end - range.contentEnd);
        }
    };
    std::size_t paragraph = 0;
    for (std::size_t i = 0; i < items_.Size(); ++i) {
        const Item& item = items_[i];
        if (item.isParagraph) {
            if (i > 0)
                close(paragraph);
            paragraph = i;
            if (item.paragraph) {
                bytes += item.paragraph->before;
                bytes += item.paragraph->open;
            } else {
                bytes += xml.substr(item.begin, document_.RangeOf(NodeOf(item)).contentBegin - item.begin);
            }
        } else if (item.piece) {
            item.piece->AppendBytes(bytes);
        } else {
            bytes += xml.substr(item.begin, item.end - item.begin);
        }
    }
    if (items_.Size() > 0)
        close(paragraph);
    return bytes;
}

std::vector<LinkRecord> TextTree::Links(std::size_t body)
{
    std::vector<LinkRecord> links;
    LinkJoiner joiner(links, body);
    std::size_t element = 0;
    linkCursor_ = {};
    for (std::size_t i = 0; i < items_.Size(); ++i) {
        Item& item = items_[i];
        if (item.isParagraph) {
            joiner.BeginParagraph();
            continue;
        }
        if (!IsRun(item.kind))
            continue;
        std::optional<LinkJoiner::Found> click;
        std::optional<LinkJoiner::Found> hover;
        if (item.piece) {
            std::erase_if(item.piece->links, &PieceLink::isRemoved);
            for (const PieceLink& link : item.piece->links)
                (link.isHover ? hover : click).emplace(LinkJoiner::Found{link.target, element++});
        } else {
            const Node properties = PropertiesOf(document_, NodeOf(item));
            for (const bool isHover : {false, true})
                if (const Node link = LinkOf(document_, properties, isHover))
                    (isHover ? hover : click).emplace(LinkJoiner::Found{ReadLinkTarget(document_, link), element++});
        }
        joiner.AddRun(item.kind == PieceKind::Break, click, hover);
    }
    return links;
}

void TextTree::Retarget(std::size_t element, const LinkTarget& target)
{
    const auto [piece, link] = FindLink(element);
    if (piece->links[link].isRemoved)
        throw NoHyperlink();
    piece->Retarget(piece->links[link], target);
}

void TextTree::RemoveLink(std::size_t element)
{
    const auto [piece, link] = FindLink(element);
    piece->RemoveLink(piece->links[link]);
}

std::size_t TextTree::CountLinks(const Item& item) const
{
    if (item.isParagraph || !IsRun(item.kind))
        return 0;
    if (item.piece)
        return item.piece->links.size();
    const Node properties = PropertiesOf(document_, NodeOf(item));
    std::size_t count = 0;
    for (const bool isHover : {false, true})
        count += LinkOf(document_, properties, isHover) ? 1 : 0;
    return count;
}

std::pair<TextPiece*, std::size_t> TextTree::FindLink(std::size_t element)
{
    // Links are edited front to back, too.
    if (element < linkCursor_.units)
        linkCursor_ = {};
    for (; linkCursor_.item < items_.Size(); ++linkCursor_.item) {
        const std::size_t count = CountLinks(items_[linkCursor_.item]);
        if (element < linkCursor_.units + count)
            return {&TouchPiece(linkCursor_.item), element - linkCursor_.units};
        linkCursor_.units += count;
    }
    throw NoHyperlink();
}

void TextTree::Replace(std::size_t begin, std::size_t length, StringView with)
{
    if (items_.Size() == 0)
        throw Failure(FailureNumber::InvalidRequest, u"The shape has no paragraph that a text could be put into");
    linkCursor_ = {};
    const Place anchor = Anchor(begin, length);
    const std::size_t own = std::min(length, items_[anchor.item].length - anchor.offset);
    Remove(anchor.item + 1, length - own);
    if (with.find_first_of(u"\r\v") == StringView::npos) {
        ReplaceUnits(anchor.item, anchor.offset, own, with);
    } else {
        ReplaceUnits(anchor.item, anchor.offset, own, {});
        Insert(anchor, with);
    }
    DropIfEmpty(anchor.item);
}

/// The piece that holds a position; at a paragraph break or at the end, the place after the paragraph's last piece. The
/// cursor is there afterwards.
TextTree::Place TextTree::PlaceOf(std::size_t position)
{
    if (position < cursor_.units)
        cursor_ = {};
    while (cursor_.item < items_.Size()) {
        const Item& item = items_[cursor_.item];
        if (item.isParagraph) {
            // The break in front of all paragraphs but the first.
            const std::size_t units = cursor_.item > 0 ? 1 : 0;
            if (units > 0 && position == cursor_.units)
                break;
            cursor_.units += units;
            cursor_.paragraph = cursor_.item;
        } else {
            if (position < cursor_.units + item.length)
                return {cursor_.item, position - cursor_.units};
            cursor_.units += item.length;
        }
        ++cursor_.item;
    }
    return {cursor_.item, 0};
}

/// The run that takes the new text, and the offset in it. A field becomes a run; where the text begins at a break or in
/// an empty paragraph, a new empty run is put there. The cursor is in the paragraph afterwards, not behind the run.
TextTree::Place TextTree::Anchor(std::size_t begin, std::size_t length)
{
    Place place = PlaceOf(begin);
    if (length == 0 && begin > 0) {
        // An insertion belongs to the text in front of it.
        const Place before = PlaceOf(begin - 1);
        if (!IsEndOfParagraph(before.item) && items_[before.item].IsText())
            place = {before.item, before.offset + 1};
        else
            place = PlaceOf(begin);
    }
    if (!IsEndOfParagraph(place.item) && items_[place.item].IsText()) {
        TurnIntoRun(place.item);
        return place;
    }
    Paragraph& paragraph = Touch(cursor_.paragraph);
    TextPiece run = MakeRun(PropertiesNear(place, length), {}, paragraph);
    Open(paragraph);
    if (IsEndOfParagraph(place.item)) {
        place.item = EndOfText(place.item);
        cursor_.item = place.item;  // what is passed over has no length
    }
    PutPiece(place.item, std::move(run));
    return {place.item, 0};
}

/// Run properties for text at a place where no run is: those of the next replaced run, else of the run before, else of
/// the paragraph's end.
RunProperties TextTree::PropertiesNear(const Place& place, std::size_t length)
{
    std::size_t left = length;
    std::size_t paragraph = cursor_.paragraph;
    const auto take = [&](std::size_t at) { return TouchPiece(at).Properties(Touch(paragraph).scope); };
    for (std::size_t i = place.item; i < items_.Size() && left > 0; ++i) {
        if (items_[i].IsText())
            return take(i);
        if (items_[i].isParagraph)
            paragraph = i;
        left -= std::min<std::size_t>(left, items_[i].isParagraph ? 1 : items_[i].length);
    }
    paragraph = cursor_.paragraph;
    const std::size_t front = place.item - std::min(place.item, farthestLook);
    for (std::size_t i = place.item; i-- > front && !items_[i].isParagraph;)
        if (items_[i].kind == PieceKind::Run || items_[i].IsText())  // a run may be empty, as in a footer to fill in
            return take(i);
    for (std::size_t i = front; i < place.item + farthestLook; ++i) {
        if (i > paragraph && IsEndOfParagraph(i))
            break;
        if (i > paragraph && items_[i].kind == PieceKind::EndProperties)
            return take(i);
    }
    return {};
}

/// Removes text after the anchor, from an item on.
void TextTree::Remove(std::size_t from, std::size_t length)
{
    while (length > 0 && from < items_.Size()) {
        const Item& item = items_[from];
        if (item.isParagraph) {
            from = JoinParagraph(from);
            --length;
        } else if (item.length == 0) {
            ++from;
        } else if (item.length > length) {
            TurnIntoRun(from);
            ReplaceUnits(from, 0, length, {});
            return;
        } else {
            length -= item.length;
            ErasePiece(from);
        }
    }
}

/// Appends the pieces of a paragraph to the one in front of it, which the cursor is in, and gives the index of the
/// first of them. The properties of the first paragraph hold for both, those of its end go when the next one has its
/// own. What stood between the two, other than white space, stays in front of both.
std::size_t TextTree::JoinParagraph(std::size_t next)
{
    Paragraph gone = std::move(Touch(next));
    items_[cursor_.paragraph].length += items_[next].length;
    items_.Erase(next);
    Paragraph& joined = Touch(cursor_.paragraph);
    if (!IsBlank(gone.before))
        joined.before += gone.before;

    std::size_t joint = next;
    while (next - joint < mostEndings &&
           (items_[joint - 1].kind == PieceKind::EndProperties || items_[joint - 1].kind == PieceKind::Gap) &&
           !items_[joint - 1].isParagraph)
        --joint;
    std::size_t endings = next - joint;

    const bool declares = gone.scope != joined.scope;
    bool hasEnd = false;
    std::size_t end = next;
    while (!IsEndOfParagraph(end)) {
        const Item& item = items_[end];
        if (item.kind == PieceKind::Properties) {
            ErasePiece(end);
            continue;
        }
        hasEnd = hasEnd || item.kind == PieceKind::EndProperties;
        if (declares && item.kind != PieceKind::Gap) {
            TextPiece& piece = TouchPiece(end);
            piece.Declare(NeededIn(joined.scope, gone.scope, piece.bytes));
        }
        ++end;
    }
    // To the end of both, or away.
    for (; endings > 0; --endings) {
        if (hasEnd) {
            ErasePiece(joint);
        } else {
            Item ending = std::move(items_[joint]);
            items_.Erase(joint);
            items_.Insert(end - 1, std::move(ending));
        }
    }
    return joint;
}

/// Puts text with breaks into the anchor, which may be within a run.
void TextTree::Insert(const Place& at, StringView with)
{
    const RunProperties properties = items_[at.item].piece->Properties(Touch(cursor_.paragraph).scope);
    if (items_[at.item].length > at.offset) {
        TextPiece& rest = *items_[at.item].piece;
        TextPiece front = rest.TakeFront(at.offset);
        Grow(front.bytes.size() - std::min(front.bytes.size(), at.offset));
        // Both lie in the same paragraph so far; the rest of an empty front has what text there is.
        items_[at.item].length = Offset(rest.length);
        PutPiece(at.item, std::move(front));
    }

    const Cursor first = cursor_;
    const std::size_t firstBreak = with.find_first_of(u"\r\v");
    ReplaceUnits(at.item, at.offset, 0, with.substr(0, firstBreak));
    std::size_t next = at.item + 1;  // where the following piece goes
    const auto put = [&](TextPiece piece) { PutPiece(next++, std::move(piece)); };
    for (std::size_t i = firstBreak; i < with.size();) {
        if (with[i] == lineBreak) {
            put(MakeBreak(properties, Touch(cursor_.paragraph)));
        } else {
            const std::size_t last = cursor_.paragraph;
            std::size_t split = next;
            next = SplitParagraph(next);
            if (last != first.paragraph) {
                const std::size_t before = items_.Size();
                KeepHeight(last, split, properties);
                split += items_.Size() - before;
                next += items_.Size() - before;
            }
            cursor_.paragraph = split;
        }
        const std::size_t end = std::min(with.find_first_of(u"\r\v", i + 1), with.size());
        if (end > i + 1)
            put(MakeRun(properties, with.substr(i + 1, end - i - 1), Touch(cursor_.paragraph)));
        i = end;
    }
    if (cursor_.paragraph != first.paragraph)
        KeepHeight(cursor_.paragraph, noPlace, properties);
    cursor_ = first;
}

/// Begins a new paragraph with the same properties in front of an item; gives the index after these.
std::size_t TextTree::SplitParagraph(std::size_t from)
{
    const std::size_t paragraph = cursor_.paragraph;
    const Paragraph& first = Touch(paragraph);
    Item second{.isParagraph = true};
    second.paragraph = std::make_unique<Paragraph>(Paragraph{.open = first.open,  // which may declare namespaces
                                                             .close = first.close,
                                                             .prefix = first.prefix,
                                                             .scope = first.scope});
    Grow(first.open.size() + first.close.size());
    std::vector<Item> properties;
    std::uint32_t heights = 0;
    for (std::size_t i = paragraph + 1; i < from; ++i) {
        const Item& item = items_[i];
        heights += item.SaysHeight() ? 1 : 0;
        // A paragraph has one (ECMA-376 21.1.2.2.6); what else calls itself so is not multiplied.
        if (item.kind != PieceKind::Properties || !properties.empty())
            continue;
        Item& copy = properties.emplace_back();
        copy.kind = item.kind;
        copy.begin = item.begin;
        copy.end = item.end;
        if (item.piece)
            copy.piece = std::make_unique<TextPiece>(item.piece->Copy());
        Grow(item.piece ? item.piece->bytes.size() : item.end - item.begin);
    }
    second.length = items_[paragraph].length - heights;
    items_[paragraph].length = heights;
    items_.Insert(from, std::move(second));
    const std::size_t after = from + 1 + properties.size();
    items_.Replace(from + 1, 0, std::move(properties));
    return after;
}

/// A run without text goes; as the paragraph's only one it leaves its properties as those of the paragraph's end.
void TextTree::DropIfEmpty(std::size_t at)
{
    if (items_[at].length > 0)
        return;
    if (items_[cursor_.paragraph].length > 0) {
        ErasePiece(at);
        return;
    }
    RunProperties properties = TouchPiece(at).Properties(Touch(cursor_.paragraph).scope);
    ErasePiece(at);
    KeepHeight(cursor_.paragraph, noPlace, std::move(properties));
}

/// A line without text has the height that the properties of its paragraph's end say. `end` is the place after the
/// paragraph's last piece, if it is known.
void TextTree::KeepHeight(std::size_t paragraph, std::size_t end, RunProperties properties)
{
    if (properties.bytes.empty() || items_[paragraph].length > 0)
        return;
    properties.DropLinks();
    Adapt(properties, "endParaRPr", Touch(paragraph).scope);
    Grow(properties.bytes.size());
    // After white space and anything else: the end properties are a paragraph's last child.
    TextPiece piece{.kind = PieceKind::EndProperties, .bytes = std::move(properties.bytes)};
    piece.properties = {0, piece.bytes.size()};
    Item item{.kind = PieceKind::EndProperties};
    item.piece = std::make_unique<TextPiece>(std::move(piece));
    ++items_[paragraph].length;
    items_.Insert(end == noPlace ? EndOfParagraph(paragraph + 1) : end, std::move(item));
}

/// The place after a paragraph's last piece.
std::size_t TextTree::EndOfParagraph(std::size_t from) const
{
    while (!IsEndOfParagraph(from))
        ++from;
    return from;
}

/// The place of the paragraph's end properties, or after its last piece, which is given.
std::size_t TextTree::EndOfText(std::size_t endOfParagraph) const
{
    std::size_t found = endOfParagraph;
    for (std::size_t i = endOfParagraph; i-- > 0 && endOfParagraph - i <= mostEndings;) {
        if (items_[i].isParagraph || (items_[i].kind != PieceKind::EndProperties && items_[i].kind != PieceKind::Gap))
            break;
        if (items_[i].kind == PieceKind::EndProperties)
            found = i;
    }
    return found;
}

/// Gives a paragraph that is an empty-element tag an end tag.
void TextTree::Open(Paragraph& paragraph)
{
    if (!paragraph.close.empty())
        return;
    paragraph.open = paragraph.open.substr(0, paragraph.open.rfind('/')) + ">";
    paragraph.close = "</" + paragraph.prefix + "p>";
    Grow(paragraph.close.size());
}

/// What an element has to declare when it leaves its own scope for another one, both of this text.
NamespaceScope TextTree::NeededIn(const NamespaceScope& other, const NamespaceScope& own,
                                  std::string_view element) const
{
    return own.NeededIn(
        other, [&](std::string_view name) { return document_.DeclarationAt(body_, name); }, element);
}

/// Gives run properties another local name, and what they need to mean the same in another scope.
void TextTree::Adapt(RunProperties& properties, std::string_view localName, const NamespaceScope& scope)
{
    properties.DropErrorMark();
    const ElementRange range = ScanElement(properties.bytes, 0);
    const std::string name = std::string(range.Prefix()) + std::string(localName);
    const std::string declarations = NeededIn(scope, properties.scope, properties.bytes).Attributes();
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
                              const NamespaceScope& scope)
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

TextPiece TextTree::MakeRun(RunProperties properties, StringView text, const Paragraph& paragraph)
{
    const std::string& prefix = paragraph.prefix;
    TextPiece piece = MakePiece(PieceKind::Run, "<" + prefix + "r>", std::move(properties), paragraph.scope);
    piece.bytes += "<" + prefix + "t>";
    piece.content.begin = piece.bytes.size();
    piece.bytes += EscapeRunText(text);
    piece.content.end = piece.bytes.size();
    piece.bytes += "</" + prefix + "t></" + prefix + "r>";
    piece.length = text.size();
    Grow(piece.bytes.size());
    return piece;
}

TextPiece TextTree::MakeBreak(RunProperties properties, const Paragraph& paragraph)
{
    const std::string name = paragraph.prefix + "br";
    const bool isEmpty = properties.bytes.empty();
    TextPiece piece =
        MakePiece(PieceKind::Break, "<" + name + (isEmpty ? "/>" : ">"), std::move(properties), paragraph.scope);
    piece.length = 1;
    if (!isEmpty)
        piece.bytes += "</" + name + ">";
    Grow(piece.bytes.size());
    return piece;
}

/// A field that text is put into becomes a run with the same characters, as they are written.
void TextTree::TurnIntoRun(std::size_t at)
{
    TextPiece& piece = TouchPiece(at);
    if (piece.kind == PieceKind::Run)
        return;
    const Paragraph& paragraph = Touch(cursor_.paragraph);
    TextPiece run = MakeRun(piece.Properties(paragraph.scope), {}, paragraph);
    std::string characters;
    piece.AppendContent(characters);
    if (piece.hasElementsInContent) {  // which may need what the field declares
        String text;
        AppendContent(characters, text, InnerElements::Skipped);
        characters = EscapeRunText(text);
    }
    run.bytes.insert(run.content.begin, characters);
    run.content.end += characters.size();
    run.length = piece.length;
    piece = std::move(run);
    items_[at].kind = PieceKind::Run;
}

}  // namespace tessarine::builtin
