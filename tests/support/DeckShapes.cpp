#include "support/DeckShapes.h"

namespace tessarine::test
{
namespace
{

constexpr std::int64_t EmuPerHundredthInch = 9144;

std::string Number(std::int64_t value)
{
    return std::to_string(value);
}

std::string GeometryXml(const Geometry& geometry)
{
    if (geometry.free) {
        return "<a:custGeom><a:avLst/><a:gdLst/><a:ahLst/><a:cxnLst/><a:rect l=\"0\" t=\"0\" r=\"r\" "
               "b=\"b\"/><a:pathLst>"
               "<a:path w=\"100\" h=\"100\"><a:moveTo><a:pt x=\"0\" y=\"0\"/></a:moveTo><a:lnTo><a:pt x=\"100\" "
               "y=\"50\"/>"
               "</a:lnTo><a:lnTo><a:pt x=\"0\" y=\"100\"/></a:lnTo><a:close/></a:path></a:pathLst></a:custGeom>";
    }
    return geometry.preset.empty() ? std::string()
                                   : "<a:prstGeom prst=\"" + geometry.preset + "\"><a:avLst/></a:prstGeom>";
}

}  // namespace

Rectangle At(int x, int y, int width, int height)
{
    return {x * EmuPerHundredthInch, y * EmuPerHundredthInch, width * EmuPerHundredthInch,
            height * EmuPerHundredthInch};
}

Shape& Shape::Named(String name)
{
    name_ = std::move(name);
    return *this;
}

Shape& Shape::Described(String alternativeText)
{
    description_ = std::move(alternativeText);
    return *this;
}

Shape& Shape::Hidden()
{
    hidden_ = true;
    return *this;
}

Shape& Shape::Place(Rectangle place)
{
    place_ = place;
    return *this;
}

Shape& Shape::Click(Hyperlink link)
{
    click_ = std::move(link);
    return *this;
}

Shape& Shape::Hover(Hyperlink link)
{
    hover_ = std::move(link);
    return *this;
}

Shape& Shape::InPlaceholder(std::string type, int index)
{
    placeholder_ = {std::move(type), index};
    return *this;
}

std::string Shape::NonVisualXml(PartWriter& part) const
{
    const int id = part.NextShapeId();
    std::string xml = "<p:cNvPr id=\"" + Number(id) + "\" name=\"" + XmlAttribute(name_) + " " + Number(id - 1) + "\"";
    if (!description_.empty())
        xml += " descr=\"" + XmlAttribute(description_) + "\"";
    if (hidden_)
        xml += " hidden=\"1\"";
    if (!click_ && !hover_)
        return xml + "/>";
    xml += ">";
    if (click_)
        xml += click_->Xml("a:hlinkClick", part);
    if (hover_)
        xml += hover_->Xml("a:hlinkHover", part);
    return xml + "</p:cNvPr>";
}

std::string Shape::ApplicationXml(const std::string& inner) const
{
    std::string content;
    if (placeholder_) {
        content = "<p:ph";
        if (!placeholder_->first.empty())
            content += " type=\"" + placeholder_->first + "\"";
        if (placeholder_->second >= 0)
            content += " idx=\"" + Number(placeholder_->second) + "\"";
        content += "/>";
    }
    content += inner;
    return content.empty() ? "<p:nvPr/>" : "<p:nvPr>" + content + "</p:nvPr>";
}

std::string Shape::TransformXml(const std::string& element) const
{
    // Frames need a place; text in a placeholder inherits it from the layout.
    if (!place_ && placeholder_)
        return {};
    const Rectangle place = place_.value_or(At(100, 150, 600, 100));
    return "<" + element + "><a:off x=\"" + Number(place.x) + "\" y=\"" + Number(place.y) + "\"/><a:ext cx=\"" +
           Number(place.width) + "\" cy=\"" + Number(place.height) + "\"/></" + element + ">";
}

Shape TextShape(String name, Geometry geometry, std::vector<Paragraph> paragraphs)
{
    return {std::move(name),
            [geometry = std::move(geometry), paragraphs = std::move(paragraphs)](const Shape& shape, PartWriter& part) {
                std::string xml = "<p:sp><p:nvSpPr>" + shape.NonVisualXml(part);
                xml += geometry.textBox ? "<p:cNvSpPr txBox=\"1\"/>" : "<p:cNvSpPr/>";
                xml += shape.ApplicationXml() + "</p:nvSpPr>";
                const std::string properties = shape.TransformXml("a:xfrm") + GeometryXml(geometry);
                xml += properties.empty() ? "<p:spPr/>" : "<p:spPr>" + properties + "</p:spPr>";
                if (geometry.textBody) {
                    xml += "<p:txBody>" + geometry.bodyProperties + geometry.listStyle;
                    for (const Paragraph& paragraph : paragraphs)
                        xml += paragraph.Xml(part);
                    xml += "</p:txBody>";
                }
                return xml + "</p:sp>";
            }};
}

std::vector<Paragraph> ToParagraphs(StringView text)
{
    return Lines(text);
}

std::vector<Paragraph> ToParagraphs(TextRun run)
{
    return {Paragraph(std::move(run))};
}

std::vector<Paragraph> ToParagraphs(Paragraph paragraph)
{
    return {std::move(paragraph)};
}

std::vector<Paragraph> ToParagraphs(std::vector<Paragraph> paragraphs)
{
    return paragraphs;
}

Shape SlideNumber(String cached)
{
    return Placeholder("sldNum", 13, Paragraph(Field("slidenum", std::move(cached))))
        .Named(u"Slide Number Placeholder");
}

Shape SlideImage()
{
    return TextShape(u"Slide Image Placeholder", {.textBody = false}, {}).InPlaceholder("sldImg");
}

Shape WithoutTextBody()
{
    return TextShape(u"Rectangle", {.preset = "rect", .textBody = false}, {});
}

Shape LineShape()
{
    return TextShape(u"Line", {.preset = "line", .textBody = false}, {});
}

Shape Connector(const std::string& preset)
{
    return {u"Connector", [preset](const Shape& shape, PartWriter& part) {
                return "<p:cxnSp><p:nvCxnSpPr>" + shape.NonVisualXml(part) + "<p:cNvCxnSpPr/>" +
                       shape.ApplicationXml() + "</p:nvCxnSpPr><p:spPr>" + shape.TransformXml("a:xfrm") +
                       GeometryXml({.preset = preset}) + "<a:ln w=\"12700\"/></p:spPr></p:cxnSp>";
            }};
}

Shape GroupOf(std::vector<Shape> members)
{
    return {u"Group", [members = std::move(members)](const Shape& shape, PartWriter& part) {
                std::string xml = "<p:grpSp><p:nvGrpSpPr>" + shape.NonVisualXml(part) + "<p:cNvGrpSpPr/>" +
                                  shape.ApplicationXml() + "</p:nvGrpSpPr><p:grpSpPr/>";
                for (const Shape& member : members)
                    xml += member.Xml(part);
                return xml + "</p:grpSp>";
            }};
}

Shape Table(std::vector<std::vector<Paragraph>> rows)
{
    return {u"Table", [rows = std::move(rows)](const Shape& shape, PartWriter& part) {
                std::string xml =
                    "<p:graphicFrame><p:nvGraphicFramePr>" + shape.NonVisualXml(part) + "<p:cNvGraphicFramePr/>" +
                    shape.ApplicationXml() + "</p:nvGraphicFramePr>" + shape.TransformXml("p:xfrm") +
                    "<a:graphic><a:graphicData uri=\"http://schemas.openxmlformats.org/drawingml/2006/table\">"
                    "<a:tbl><a:tblPr/><a:tblGrid>";
                for (std::size_t column = 0; !rows.empty() && column < rows.front().size(); ++column)
                    xml += "<a:gridCol w=\"1828800\"/>";
                xml += "</a:tblGrid>";
                for (const std::vector<Paragraph>& row : rows) {
                    xml += "<a:tr h=\"370840\">";
                    for (const Paragraph& cell : row)
                        xml +=
                            "<a:tc><a:txBody><a:bodyPr/><a:lstStyle/>" + cell.Xml(part) + "</a:txBody><a:tcPr/></a:tc>";
                    xml += "</a:tr>";
                }
                return xml + "</a:tbl></a:graphicData></a:graphic></p:graphicFrame>";
            }};
}

Shape Alternate(std::string prefix, std::string namespaceUri, Shape choice, Shape fallback)
{
    return {u"Alternate", [=](const Shape&, PartWriter& part) {
                return "<mc:AlternateContent xmlns:mc=\"" + std::string(Uri::Compatibility) +
                       "\"><mc:Choice xmlns:" + prefix + "=\"" + namespaceUri + "\" Requires=\"" + prefix + "\">" +
                       choice.Xml(part) + "</mc:Choice><mc:Fallback>" + fallback.Xml(part) +
                       "</mc:Fallback></mc:AlternateContent>";
            }};
}

Shape RawShape(std::string xml)
{
    return {u"", [xml = std::move(xml)](const Shape&, PartWriter&) { return xml; }};
}

}  // namespace tessarine::test
