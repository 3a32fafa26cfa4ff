#include "office/builtin/text/TextTree.h"

#include <algorithm>
#include <optional>

#include "platform/Failure.h"

/// Replacing units of a text: which pieces go, which take the new text, and what becomes of paragraphs.
namespace tessarine::builtin
{

namespace
{

constexpr std::size_t noPlace = static_cast<std::size_t>(-1);

// In pieces. Where a paragraph has so many without text, an insertion looks for properties to take no further.
constexpr std::size_t farthestLook = 1000;
// In pieces. Programs write one a:endParaRPr, perhaps with white space around it.
constexpr std::size_t mostEndings = 8;

bool IsBlank(std::string_view gap)
{
    return gap.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

}  // namespace

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

}  // namespace tessarine::builtin
