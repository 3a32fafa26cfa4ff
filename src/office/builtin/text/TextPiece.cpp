#include "office/builtin/text/TextPiece.h"

#include <algorithm>
#include <utility>

#include "office/builtin/xml/StartTag.h"

namespace tessarine::builtin
{

namespace
{

Span PlaceIn(const ElementRange& outer, const ElementRange& inner)
{
    return {inner.begin - outer.begin, inner.end - outer.begin};
}

std::vector<PieceLink> ReadLinks(const XmlDocument& document, Node properties, const ElementRange& piece)
{
    std::vector<PieceLink> links;
    for (const bool isHover : {false, true}) {
        if (const Node element = LinkOf(document, properties, isHover))
            links.push_back({.place = PlaceIn(piece, document.RangeOf(element)),
                             .isHover = isHover,
                             .idName = std::string(document.AttributeName(element, Ns::DocumentRelationships, "id")),
                             .target = ReadLinkTarget(document, element)});
    }
    return links;
}

}  // namespace

TextPiece TextPiece::Read(const XmlDocument& document, Node child)
{
    const ElementRange range = document.RangeOf(child);
    TextPiece piece{.kind = KindOf(document, child),
                    .bytes = std::string(document.Bytes().substr(range.begin, range.end - range.begin))};
    piece.scope.Enter(document, child);
    const bool isEnd = piece.kind == PieceKind::EndProperties;
    if (!isEnd && !IsRun(piece.kind))
        return piece;

    if (const Node properties = isEnd ? child : PropertiesOf(document, child)) {
        piece.properties = PlaceIn(range, document.RangeOf(properties));
        piece.links = ReadLinks(document, properties, range);
    }
    if (piece.kind == PieceKind::Break) {
        piece.length = 1;
    } else if (const Node characters = isEnd ? Node() : CharactersOf(document, child)) {
        const ElementRange inner = document.RangeOf(characters);
        if (!inner.IsEmptyTag()) {
            piece.content = {inner.contentBegin - range.begin, inner.contentEnd - range.begin};
            piece.hasElementsInContent = !characters.ChildElements().IsEmpty();
            // Mostly known already, but not by all who take a piece.
            piece.length = document.TextOf(characters).size();
        }
    }
    return piece;
}

RunProperties TextPiece::Properties(const NamespaceScope& around) const
{
    RunProperties taken{
        .bytes = bytes.substr(properties.begin, properties.end - properties.begin), .links = links, .scope = around};
    if (kind != PieceKind::EndProperties)  // whose own start tag is among the bytes
        taken.scope.Enter(scope);
    std::erase_if(taken.links, &PieceLink::isRemoved);
    for (PieceLink& link : taken.links) {
        link.place.begin -= properties.begin;
        link.place.end -= properties.begin;
    }
    return taken;
}

namespace
{

/// Where the error mark of run properties stands, with the white space in front of it; an empty span for none.
Span ErrorMarkOf(std::string_view properties)
{
    const AttributeRange mark = FindAttribute(properties, 0, "err");
    return mark.found ? Span{mark.begin - 1, mark.valueEnd + 1} : Span{};
}

}  // namespace

void RunProperties::DropErrorMark()
{
    const Span mark = bytes.empty() ? Span{} : ErrorMarkOf(bytes);
    const std::size_t length = mark.end - mark.begin;
    bytes.erase(mark.begin, length);
    // The mark is in the start tag, and links are elements after it.
    for (PieceLink& link : links) {
        link.place.begin -= length;
        link.place.end -= length;
    }
}

void RunProperties::DropLinks()
{
    std::ranges::sort(links, std::ranges::greater(), [](const PieceLink& link) { return link.place.begin; });
    for (const PieceLink& link : links)
        bytes.erase(link.place.begin, link.place.end - link.place.begin);
    links.clear();
}

void TextPiece::AppendContent(std::string& target) const
{
    if (editor)
        editor->AppendTo(target);
    else
        target.append(bytes, content.begin, content.end - content.begin);
}

void TextPiece::AppendBytes(std::string& target) const
{
    target.append(bytes, 0, content.begin);
    AppendContent(target);
    target.append(bytes, content.end);
}

TextPiece TextPiece::Copy() const
{
    return {.kind = kind,
            .bytes = bytes,
            .content = content,
            .hasElementsInContent = hasElementsInContent,
            .properties = properties,
            .links = links,
            .scope = scope,
            .length = length};
}

void TextPiece::Open()
{
    if (editor)
        return;
    editor = std::make_unique<ContentEditor>(bytes.substr(content.begin, content.end - content.begin));
    Splice(content, {});
}

void TextPiece::Close()
{
    if (!editor)
        return;
    std::string edited;
    editor->AppendTo(edited);
    editor.reset();
    Splice(content, edited);
}

void TextPiece::ReplaceUnits(std::size_t offset, std::size_t count, StringView with)
{
    if (count == 0 && with.empty())
        return;
    DropErrorMark();
    Open();
    editor->Replace(offset, count, with);
    length = editor->Size();
}

void TextPiece::DropErrorMark()
{
    // One look is enough, however often the text is changed.
    if (!std::exchange(hasErrorMark, false) || properties.begin == properties.end)
        return;
    const Span mark = ErrorMarkOf(std::string_view(bytes).substr(properties.begin, properties.end - properties.begin));
    if (mark.begin != mark.end)
        Splice({properties.begin + mark.begin, properties.begin + mark.end}, {});
}

TextPiece TextPiece::TakeFront(std::size_t offset)
{
    Open();
    const std::string taken = editor->TakeFront(offset);
    length = editor->Size();
    TextPiece front = Copy();
    front.Splice(front.content, taken);
    front.length = offset;
    return front;
}

void TextPiece::Retarget(PieceLink& link, const LinkTarget& target)
{
    const std::string_view element =
        std::string_view(bytes).substr(link.place.begin, link.place.end - link.place.begin);
    const std::size_t tagLength = ScanElement(element, 0).contentBegin;
    std::string tag(element.substr(0, tagLength));
    builtin::Retarget(tag, link.idName, link.target, target);
    link.target = target;
    Splice({link.place.begin, link.place.begin + tagLength}, tag);
}

void TextPiece::RemoveLink(PieceLink& link)
{
    if (link.isRemoved)
        return;
    link.isRemoved = true;
    Splice(link.place, {});
}

void TextPiece::Declare(const NamespaceScope& needed)
{
    const std::size_t nameEnd = 1 + ElementName(bytes).size();
    Splice({nameEnd, nameEnd}, needed.Attributes());
    scope.Enter(needed);
}

/// Puts a text in place of bytes; what stands after them, and the end of what they stand in, moves along.
void TextPiece::Splice(Span where, std::string_view text)
{
    bytes.replace(where.begin, where.end - where.begin, text);
    const auto move = [&](Span& span) {
        const auto moved = [&](std::size_t at) { return at - where.end + where.begin + text.size(); };
        if (span.begin > where.begin && span.begin >= where.end)
            span.begin = moved(span.begin);
        if (span.end >= where.end)
            span.end = moved(span.end);
    };
    move(content);
    move(properties);
    for (PieceLink& link : links)
        move(link.place);
}

}  // namespace tessarine::builtin
