#include "office/builtin/text/TextTree.h"

#include "office/builtin/limits/Damage.h"
#include "office/builtin/xml/XmlText.h"

namespace tessarine::builtin
{

TextTree::TextTree(const XmlDocument& document, Node body, StringView text) : document_(document), body_(body)
{
    bool holds = true;
    const auto take = [&](StringView units) {
        holds = holds && text.starts_with(units);
        text.remove_prefix(holds ? units.size() : 0);
    };
    std::size_t count = 0;
    for (const Node child : body.ChildElements())
        if (IsParagraph(document, child)) {
            ++count;
            for ([[maybe_unused]] const Node piece : child.ChildElements())
                ++count;
        }
    std::vector<Item> items;
    items.reserve(count + count / 2);  // with some of what stands between elements

    String own;
    for (const Node child : body.ChildElements()) {
        if (!IsParagraph(document, child))
            continue;
        const ElementRange range = document.RangeOf(child);
        if (items.empty())
            begin_ = end_ = range.begin;
        else
            take({&paragraphBreak, 1});
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
                take({&lineBreak, 1});
            } else if (IsRun(item.kind)) {
                own.clear();
                document.AppendTextOf(CharactersOf(document, element), own);
                item.length = Offset(own.size());
                take(own);
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
    if (!holds || !text.empty())
        throw Damage({}, "a shape's text is not what it was when it was read", document.OffsetOf(body));
    items_ = GapBuffer(std::move(items));
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

std::size_t TextTree::KeptBytes() const
{
    std::size_t bytes = sizeof(TextTree) + items_.KeptBytes();
    for (std::size_t i = 0; i < items_.Size(); ++i) {
        if (const TextPiece* const piece = items_[i].piece.get())
            bytes += sizeof(TextPiece) + piece->bytes.size() + piece->links.size() * sizeof(PieceLink) +
                     (piece->editor ? piece->editor->KeptBytes() : 0);
        if (const Paragraph* const paragraph = items_[i].paragraph.get())
            bytes += sizeof(Paragraph) + paragraph->before.size() + paragraph->open.size();
    }
    return bytes;
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

}  // namespace tessarine::builtin
