#include "office/builtin/text/TextMarkup.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tessarine::builtin
{

using enum Ns;

bool IsParagraph(const XmlDocument& document, Node child)
{
    return document.Is(child, Drawing, "p");
}

PieceKind KindOf(const XmlDocument& document, Node child)
{
    static constexpr std::array<std::pair<std::string_view, PieceKind>, 5> kinds{
        {{"r", PieceKind::Run},
         {"br", PieceKind::Break},
         {"fld", PieceKind::Field},
         {"pPr", PieceKind::Properties},
         {"endParaRPr", PieceKind::EndProperties}}};
    const std::string_view name = child.Name();
    // Nearly all programs write "a:r".
    const std::size_t colon = name.size() > 1 && name[1] == ':' ? 1 : name.find(':');
    const std::string_view local = name.substr(colon + 1);
    const auto found = std::ranges::find(kinds, local, &std::pair<std::string_view, PieceKind>::first);
    if (found == kinds.end() || !document.Is(child, Drawing, local))
        return PieceKind::Opaque;
    if (found->second != PieceKind::Field)
        return found->second;
    const std::string_view type = document.Attribute(child, "type");
    return type == "slidenum" || type.starts_with("datetime") ? PieceKind::VolatileField : PieceKind::Field;
}

bool IsRun(PieceKind kind)
{
    return kind == PieceKind::Run || kind == PieceKind::Field || kind == PieceKind::VolatileField ||
           kind == PieceKind::Break;
}

Node CharactersOf(const XmlDocument& document, Node run)
{
    return document.Child(run, Drawing, "t");
}

Node PropertiesOf(const XmlDocument& document, Node run)
{
    return document.Child(run, Drawing, "rPr");
}

Node LinkOf(const XmlDocument& document, Node properties, bool isHover)
{
    return document.Child(properties, Drawing, isHover ? "hlinkMouseOver" : "hlinkClick");
}

BodyText ReadBodyText(const XmlDocument& document, Node body)
{
    BodyText read;
    bool first = true;
    for (const Node paragraph : body.ChildElements()) {
        if (!IsParagraph(document, paragraph))
            continue;
        if (!first)
            read.text += u'\r';
        first = false;
        AppendParagraph(document, paragraph, read);
    }
    return read;
}

void AppendParagraph(const XmlDocument& document, Node paragraph, BodyText& read)
{
    for (const Node child : paragraph.ChildElements())
        AppendPiece(document, child, read);
}

void AppendPiece(const XmlDocument& document, Node child, BodyText& read)
{
    const std::size_t begin = read.text.size();
    switch (KindOf(document, child)) {
        case PieceKind::Run:
        case PieceKind::Field:
            document.AppendTextOf(CharactersOf(document, child), read.text);
            break;
        case PieceKind::VolatileField:
            document.AppendTextOf(CharactersOf(document, child), read.text);
            // A length of 0 would mean a place that no hit may span.
            if (read.text.size() > begin)
                read.protectedRanges.push_back({begin, read.text.size() - begin});
            break;
        case PieceKind::Break:
            read.text += u'\v';
            break;
        case PieceKind::Opaque:
            read.protectedRanges.push_back({begin, 0});
            break;
        case PieceKind::Properties:
        case PieceKind::EndProperties:
        case PieceKind::Gap:
            break;
    }
}

}  // namespace tessarine::builtin
