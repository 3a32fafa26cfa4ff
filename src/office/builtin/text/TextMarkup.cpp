#include "office/builtin/text/TextMarkup.h"

namespace tessarine::builtin
{

using enum Ns;

bool IsParagraph(const XmlDocument& document, Node child)
{
    return document.Is(child, Drawing, "p");
}

PieceKind KindOf(const XmlDocument& document, Node child)
{
    if (document.Is(child, Drawing, "r"))
        return PieceKind::Run;
    if (document.Is(child, Drawing, "br"))
        return PieceKind::Break;
    if (document.Is(child, Drawing, "fld")) {
        const std::string_view type = document.Attribute(child, "type");
        return type == "slidenum" || type.starts_with("datetime") ? PieceKind::VolatileField : PieceKind::Field;
    }
    if (document.Is(child, Drawing, "pPr"))
        return PieceKind::Properties;
    return document.Is(child, Drawing, "endParaRPr") ? PieceKind::EndProperties : PieceKind::Opaque;
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
