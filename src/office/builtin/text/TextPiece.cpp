#include "office/builtin/text/TextPiece.h"

#include <algorithm>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/xml/StartTag.h"
#include "office/builtin/xml/XmlText.h"

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
        const Node element = document.Child(properties, Ns::Drawing, isHover ? "hlinkMouseOver" : "hlinkClick");
        if (element)
            links.push_back({.place = PlaceIn(piece, document.RangeOf(element)),
                             .isHover = isHover,
                             .idName = std::string(document.AttributeName(element, Ns::DocumentRelationships, "id")),
                             .target = ReadLinkTarget(document, element)});
    }
    return links;
}

/// True when content is well-formed and reads as the text. Only the end mark of CDATA, an escape and, after an "&" that
/// began none, a reference can come about where none was; and an escape that is written across the end of a CDATA
/// section takes that end with it.
bool Holds(std::string_view content, StringView text)
{
    if (content.find("]]>") == std::string_view::npos && content.find_first_of("<&") == std::string_view::npos &&
        text.find(u"_x00") == StringView::npos)
        return true;
    try {
        const std::vector<ContentUnit> units = ContentUnits(content, InnerElements::Skipped);
        for (std::size_t i = 2; i < units.size(); ++i)
            if (!units[i].inCData && content.substr(units[i - 2].begin, units[i].end - units[i - 2].begin) == "]]>")
                return false;
        return std::ranges::equal(units, text, {}, &ContentUnit::unit);
    } catch (const Failure&) {
        return false;  // CDATA that ends too early leaves its text as markup
    }
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
    for (PieceLink& link : taken.links) {
        link.place.begin -= properties.begin;
        link.place.end -= properties.begin;
    }
    return taken;
}

void RunProperties::DropLinks()
{
    std::ranges::sort(links, std::ranges::greater(), [](const PieceLink& link) { return link.place.begin; });
    for (const PieceLink& link : links)
        bytes.erase(link.place.begin, link.place.end - link.place.begin);
    links.clear();
}

void TextPiece::ReplaceUnits(std::size_t offset, std::size_t count, StringView with)
{
    if (count == 0 && with.empty())
        return;
    const std::string before(Content());
    const std::vector<ContentUnit> units = ContentUnits(before, InnerElements::Skipped);
    if (offset + count > units.size())
        throw Damage({}, "a text run is not what it was");

    // The insertion stands before the first replaced unit, or after the unit in front of it.
    const bool isBefore = offset < units.size();
    const bool hasPlace = isBefore || offset > 0;
    const ContentUnit* place = hasPlace ? &units[isBefore ? offset : offset - 1] : nullptr;
    const std::size_t at = place == nullptr ? before.size() : isBefore ? place->begin : place->end;
    std::string inserted = EscapeRunText(with);
    if (place != nullptr && place->inCData && !inserted.empty())
        inserted = "]]>" + inserted + "<![CDATA[";

    std::string result = before.substr(0, at) + inserted;
    std::size_t copied = at;
    for (std::size_t i = offset; i < offset + count; ++i) {
        if (units[i].begin > copied)
            result.append(before, copied, units[i].begin - copied);
        copied = std::max(copied, units[i].end);
    }
    result.append(before, copied);

    String wanted;
    for (const ContentUnit& unit : units)
        wanted += unit.unit;
    wanted.replace(offset, count, with);
    if (!Holds(result, wanted))
        result = EscapeRunText(wanted);
    Splice(content, result);
    length = units.size() - count + with.size();
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

void TextPiece::RemoveLink(std::size_t link)
{
    const Span place = links[link].place;
    links.erase(links.begin() + static_cast<std::ptrdiff_t>(link));
    Splice(place, {});
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
