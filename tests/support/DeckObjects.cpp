// Shapes that bring parts of their own: pictures, charts, diagrams, embedded objects.
#include "support/DeckShapes.h"

namespace tessarine::test
{
namespace
{

const std::string PowerPoint2010 = "http://schemas.microsoft.com/office/powerpoint/2010/main";

/// A PNG of one pixel.
std::string SmallPng()
{
    static constexpr unsigned char bytes[] = {
        0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D, 0x49, 0x48, 0x44, 0x52, 0x00, 0x00,
        0x00, 0x01, 0x00, 0x00, 0x00, 0x01, 0x08, 0x02, 0x00, 0x00, 0x00, 0x90, 0x77, 0x53, 0xDE, 0x00, 0x00, 0x00,
        0x0C, 0x49, 0x44, 0x41, 0x54, 0x78, 0x9C, 0x63, 0x70, 0x29, 0x3A, 0x02, 0x00, 0x02, 0x78, 0x01, 0x7B, 0xF8,
        0x41, 0x44, 0xCC, 0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4E, 0x44, 0xAE, 0x42, 0x60, 0x82};
    return {reinterpret_cast<const char*>(bytes), sizeof bytes};
}

std::string RelateNewImage(PartWriter& part)
{
    const std::string name = "ppt/media/image" + std::to_string(part.Package().NextNumber("image")) + ".png";
    part.Package().DefaultType("png", "image/png");
    part.Package().Put(name, SmallPng());
    return part.Relate("image", name);
}

/// A picture around the attributes and children of its a:blip; `media` goes into p:nvPr.
std::string PictureXml(const Shape& shape, PartWriter& part, const std::string& blip, const std::string& media = {})
{
    return "<p:pic><p:nvPicPr>" + shape.NonVisualXml(part) + "<p:cNvPicPr/>" + shape.ApplicationXml(media) +
           "</p:nvPicPr><p:blipFill>" + blip + "<a:stretch><a:fillRect/></a:stretch></p:blipFill><p:spPr>" +
           shape.TransformXml("a:xfrm") + "<a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom></p:spPr></p:pic>";
}

std::string EmbeddedBlip(PartWriter& part)
{
    return "<a:blip r:embed=\"" + RelateNewImage(part) + "\"/>";
}

std::string FrameXml(const Shape& shape, PartWriter& part, const std::string& uri, const std::string& content)
{
    const std::string place = shape.TransformXml("p:xfrm");
    return "<p:graphicFrame><p:nvGraphicFramePr>" + shape.NonVisualXml(part) + "<p:cNvGraphicFramePr/>" +
           shape.ApplicationXml() + "</p:nvGraphicFramePr>" + (place.empty() ? "<p:xfrm/>" : place) +
           "<a:graphic><a:graphicData uri=\"" + uri + "\">" + content + "</a:graphicData></a:graphic></p:graphicFrame>";
}

/// A new part of a kind, related from `part`; gives the relationship's id.
std::string RelateNewPart(PartWriter& part, const std::string& folder, const std::string& kind, const std::string& type,
                          const std::string& contentType, const std::string& xml)
{
    const std::string name = folder + "/" + kind + std::to_string(part.Package().NextNumber(folder + kind)) + ".xml";
    part.Package().Put(name, XmlDeclaration() + xml, contentType);
    return part.Relate(type, name);
}

std::string AlternateXml(const std::string& prefix, const std::string& uri, const std::string& choice,
                         const std::string& fallback)
{
    return "<mc:AlternateContent xmlns:mc=\"" + std::string(Uri::Compatibility) + "\"><mc:Choice xmlns:" + prefix +
           "=\"" + uri + "\" Requires=\"" + prefix + "\">" + choice + "</mc:Choice><mc:Fallback>" + fallback +
           "</mc:Fallback></mc:AlternateContent>";
}

/// p:oleObj in one or both forms around `kind` (p:embed or p:link).
std::string OleXml(PartWriter& part, OleForm form, const std::string& id, const std::string& kind)
{
    const std::string start =
        " name=\"Worksheet\" r:id=\"" + id + "\" imgW=\"914400\" imgH=\"914400\" progId=\"Excel.Sheet.12\">";
    const std::string preview = PictureXml(Shape(u"Preview", {}), part, EmbeddedBlip(part));
    if (form == OleForm::Bare)
        return "<p:oleObj" + start + kind + preview + "</p:oleObj>";
    const std::string choice = "<p:oleObj" + start + kind + "</p:oleObj>";
    return AlternateXml("v", "urn:schemas-microsoft-com:vml", choice,
                        "<p:oleObj" + start + kind + preview + "</p:oleObj>");
}

const std::string OleUri = "http://schemas.openxmlformats.org/presentationml/2006/ole";

}  // namespace

Shape Picture()
{
    return {u"Picture",
            [](const Shape& shape, PartWriter& part) { return PictureXml(shape, part, EmbeddedBlip(part)); }};
}

Shape LinkedPicture(String target)
{
    return {u"Picture", [target = std::move(target)](const Shape& shape, PartWriter& part) {
                return PictureXml(shape, part, "<a:blip r:link=\"" + part.RelateTo("image", target) + "\"/>");
            }};
}

Shape SvgPicture()
{
    return {u"Graphic", [](const Shape& shape, PartWriter& part) {
                const std::string name =
                    "ppt/media/image" + std::to_string(part.Package().NextNumber("image")) + ".svg";
                part.Package().DefaultType("svg", "image/svg+xml");
                part.Package().Put(name, "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"1\" height=\"1\"/>");
                const std::string svg = part.Relate("image", name);
                return PictureXml(
                    shape, part,
                    "<a:blip r:embed=\"" + RelateNewImage(part) +
                        "\"><a:extLst><a:ext uri=\"{96DAC541-7B7A-43D3-8B79-37D633B846F1}\"><asvg:svgBlip "
                        "xmlns:asvg=\"http://schemas.microsoft.com/office/drawing/2016/SVG/main\" r:embed=\"" +
                        svg + "\"/></a:ext></a:extLst></a:blip>");
            }};
}

Shape Video(String target)
{
    return {u"Video", [target = std::move(target)](const Shape& shape, PartWriter& part) {
                const std::string id = part.RelateTo("video", target);
                return PictureXml(shape, part, EmbeddedBlip(part), "<a:videoFile r:link=\"" + id + "\"/>");
            }};
}

Shape Chart()
{
    return {
        u"Chart", [](const Shape& shape, PartWriter& part) {
            const std::string id = RelateNewPart(
                part, "ppt/charts", "chart", "chart",
                "application/vnd.openxmlformats-officedocument.drawingml.chart+xml",
                "<c:chartSpace xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" xmlns:a=\"" +
                    std::string(Uri::Drawing) +
                    "\"><c:chart><c:title><c:tx><c:rich><a:bodyPr/><a:p><a:r><a:t>Fabrikam sales</a:t></a:r></a:p>"
                    "</c:rich></c:tx></c:title><c:plotArea><c:layout/><c:barChart><c:barDir val=\"col\"/><c:ser>"
                    "<c:idx val=\"0\"/><c:order val=\"0\"/><c:cat><c:strLit><c:ptCount val=\"1\"/><c:pt idx=\"0\">"
                    "<c:v>North</c:v></c:pt></c:strLit></c:cat><c:val><c:numLit><c:ptCount val=\"1\"/><c:pt idx=\"0\">"
                    "<c:v>7</c:v></c:pt></c:numLit></c:val></c:ser><c:axId val=\"1\"/><c:axId val=\"2\"/></c:barChart>"
                    "<c:catAx><c:axId val=\"1\"/><c:scaling/><c:delete val=\"0\"/><c:axPos val=\"b\"/><c:crossAx "
                    "val=\"2\"/>"
                    "</c:catAx><c:valAx><c:axId val=\"2\"/><c:scaling/><c:delete val=\"0\"/><c:axPos val=\"l\"/>"
                    "<c:crossAx val=\"1\"/></c:valAx></c:plotArea></c:chart></c:chartSpace>");
            const std::string uri = "http://schemas.openxmlformats.org/drawingml/2006/chart";
            return FrameXml(shape, part, uri, "<c:chart xmlns:c=\"" + uri + "\" r:id=\"" + id + "\"/>");
        }};
}

Shape ChartEx()
{
    return {u"Chart", [](const Shape& shape, PartWriter& part) {
                const std::string uri = "http://schemas.microsoft.com/office/drawing/2014/chartex";
                const std::string id = RelateNewPart(
                    part, "ppt/charts", "chartEx", "http://schemas.microsoft.com/office/2014/relationships/chartEx",
                    "application/vnd.ms-office.chartex+xml", "<cx:chartSpace xmlns:cx=\"" + uri + "\"/>");
                return AlternateXml(
                    "cx1", "http://schemas.microsoft.com/office/drawing/2015/9/8/chartex",
                    FrameXml(shape, part, uri, "<cx:chart xmlns:cx=\"" + uri + "\" r:id=\"" + id + "\"/>"),
                    AutoShape("rect", u"This chart isn't available in your version.").Xml(part));
            }};
}

Shape Diagram(String text)
{
    return {u"Diagram", [text = std::move(text)](const Shape& shape, PartWriter& part) {
                const std::string uri = "http://schemas.openxmlformats.org/drawingml/2006/diagram";
                const std::string namespaces =
                    " xmlns:dgm=\"" + uri + "\" xmlns:a=\"" + std::string(Uri::Drawing) + "\"";
                const std::string paragraph = Paragraph(text).Xml(part);
                const std::string type = "application/vnd.openxmlformats-officedocument.drawingml.diagram";
                const std::string data =
                    RelateNewPart(part, "ppt/diagrams", "data", "diagramData", type + "Data+xml",
                                  "<dgm:dataModel" + namespaces +
                                      "><dgm:ptLst><dgm:pt modelId=\"1\" type=\"doc\"/><dgm:pt "
                                      "modelId=\"2\"><dgm:prSet/><dgm:spPr/><dgm:t>"
                                      "<a:bodyPr/><a:lstStyle/>" +
                                      paragraph + "</dgm:t></dgm:pt></dgm:ptLst><dgm:cxnLst/></dgm:dataModel>");
                const std::string layout =
                    RelateNewPart(part, "ppt/diagrams", "layout", "diagramLayout", type + "Layout+xml",
                                  "<dgm:layoutDef" + namespaces + "><dgm:layoutNode/></dgm:layoutDef>");
                const std::string style = RelateNewPart(part, "ppt/diagrams", "quickStyle", "diagramQuickStyle",
                                                        type + "Style+xml", "<dgm:styleDef" + namespaces + "/>");
                const std::string colors = RelateNewPart(part, "ppt/diagrams", "colors", "diagramColors",
                                                         type + "Colors+xml", "<dgm:colorsDef" + namespaces + "/>");
                RelateNewPart(
                    part, "ppt/diagrams", "drawing",
                    "http://schemas.microsoft.com/office/2007/relationships/diagramDrawing",
                    "application/vnd.ms-office.drawingml.diagramDrawing+xml",
                    "<dsp:drawing xmlns:dsp=\"http://schemas.microsoft.com/office/drawing/2008/diagram\" xmlns:a=\"" +
                        std::string(Uri::Drawing) +
                        "\"><dsp:spTree><dsp:sp modelId=\"2\"><dsp:txBody><a:bodyPr/><a:lstStyle/>" + paragraph +
                        "</dsp:txBody></dsp:sp></dsp:spTree></dsp:drawing>");
                return FrameXml(shape, part, uri,
                                "<dgm:relIds xmlns:dgm=\"" + uri + "\" r:dm=\"" + data + "\" r:lo=\"" + layout +
                                    "\" r:qs=\"" + style + "\" r:cs=\"" + colors + "\"/>");
            }};
}

Shape Ink()
{
    return {u"Ink", [](const Shape& shape, PartWriter& part) {
                const std::string id = RelateNewPart(part, "ppt/ink", "ink", "customXml", "application/inkml+xml",
                                                     "<inkml:ink xmlns:inkml=\"http://www.w3.org/2003/InkML\"/>");
                // The ink's own id and the fallback's are the same, as PowerPoint writes them.
                return AlternateXml("p14", PowerPoint2010, "<p:contentPart p14:bwMode=\"auto\" r:id=\"" + id + "\"/>",
                                    PictureXml(shape, part, EmbeddedBlip(part)));
            }};
}

Shape ContentApp()
{
    return {u"Content App", [](const Shape& shape, PartWriter& part) {
                const std::string uri = "http://schemas.microsoft.com/office/webextensions/webextension/2010/11";
                const std::string id =
                    RelateNewPart(part, "ppt/webextensions", "webextension",
                                  "http://schemas.microsoft.com/office/2011/relationships/webextension",
                                  "application/vnd.ms-office.webextension+xml",
                                  "<we:webextension xmlns:we=\"" + uri + "\" id=\"{0}\"/>");
                return FrameXml(shape, part, uri, "<we:webextensionref xmlns:we=\"" + uri + "\" r:id=\"" + id + "\"/>");
            }};
}

Shape Model3D()
{
    return {u"3D Model", [](const Shape& shape, PartWriter& part) {
                const std::string uri = "http://schemas.microsoft.com/office/drawing/2017/model3d";
                return AlternateXml("am3d", uri, FrameXml(shape, part, uri, "<am3d:model3d/>"),
                                    PictureXml(shape, part, EmbeddedBlip(part)));
            }};
}

Shape EmbeddedOle(OleForm form)
{
    return {u"Object", [form](const Shape& shape, PartWriter& part) {
                const std::string name =
                    "ppt/embeddings/oleObject" + std::to_string(part.Package().NextNumber("oleObject")) + ".bin";
                part.Package().DefaultType("bin", "application/vnd.openxmlformats-officedocument.oleObject");
                part.Package().Put(name, "an embedded object");
                const std::string id = part.Relate("oleObject", name);
                return FrameXml(shape, part, OleUri, OleXml(part, form, id, "<p:embed/>"));
            }};
}

Shape LinkedOle(String target, OleForm form)
{
    return {u"Object", [form, target = std::move(target)](const Shape& shape, PartWriter& part) {
                const std::string id = part.RelateTo("oleObject", target);
                return FrameXml(shape, part, OleUri, OleXml(part, form, id, "<p:link updateAutomatic=\"1\"/>"));
            }};
}

Shape OleControl()
{
    return {u"Control", [](const Shape& shape, PartWriter& part) {
                const std::string id =
                    RelateNewPart(part, "ppt/activeX", "activeX", "control", "application/vnd.ms-office.activeX+xml",
                                  "<ax:ocx xmlns:ax=\"http://schemas.microsoft.com/office/2006/activeX\"/>");
                const std::string start =
                    " spid=\"_x0000_s1030\" name=\"TextBox1\" r:id=\"" + id + "\" imgW=\"914400\" imgH=\"914400\"";
                part.AddControl("<p:control" + start + "/>");
                return FrameXml(shape, part, OleUri,
                                "<p:oleObj" + start + " progId=\"Forms.TextBox.1\"><p:embed/></p:oleObj>");
            }};
}

}  // namespace tessarine::test
