#include <ostream>

#include "DeckOnDisk.h"

namespace tessarine::test
{
namespace
{

using namespace powerpoint;
using Shape = test::Shape;

std::string NonVisual(const std::string& kind, const std::string& properties = "<p:nvPr/>")
{
    return "<p:nv" + kind + "Pr><p:cNvPr id=\"2\" name=\"Shape\"/><p:cNv" + kind + "Pr/>" + properties + "</p:nv" +
           kind + "Pr>";
}

Shape PictureWith(const std::string& application, const std::string& blip)
{
    return RawShape("<p:pic>" + NonVisual("Pic", application) + "<p:blipFill>" + blip +
                    "</p:blipFill><p:spPr/></p:pic>");
}

Shape Frame(const std::string& uri, const std::string& content = {})
{
    return RawShape("<p:graphicFrame>" + NonVisual("GraphicFrame") + "<p:xfrm/><a:graphic><a:graphicData uri=\"" + uri +
                    "\">" + content + "</a:graphicData></a:graphic></p:graphicFrame>");
}

Shape Sp(const std::string& textBoxFlag, const std::string& geometry)
{
    return RawShape("<p:sp><p:nvSpPr><p:cNvPr id=\"2\" name=\"Shape\"/><p:cNvSpPr" + textBoxFlag +
                    "/><p:nvPr/></p:nvSpPr><p:spPr>" + geometry +
                    "</p:spPr><p:txBody><a:bodyPr/><a:p><a:r><a:t>x</a:t></a:r></a:p></p:txBody></p:sp>");
}

Shape Preset(const std::string& preset)
{
    return Sp("", "<a:prstGeom prst=\"" + preset + "\"><a:avLst/></a:prstGeom>");
}

const std::string media =
    "<p:nvPr><p:extLst><p:ext uri=\"{DAA4B4D4-6D71-4841-9C94-3DE7FCFB9230}\">"
    "<p14:media xmlns:p14=\"http://schemas.microsoft.com/office/powerpoint/2010/main\"/></p:ext>"
    "</p:extLst></p:nvPr>";
const std::string ole = "http://schemas.openxmlformats.org/presentationml/2006/ole";

struct KindOfShape {
    const char* name;
    Shape shape;
    MsoShapeType type;
    bool hasText;
};

void PrintTo(const KindOfShape& kind, std::ostream* out)
{
    *out << kind.name;
}

class ShapeKind : public testing::TestWithParam<KindOfShape>
{
};

TEST_P(ShapeKind, HasItsTypeAndTextFrame)
{
    const DeckOnDisk deck(Deck().Slide(GetParam().shape));
    const auto presentation = deck.Open();

    const auto shapes = All(SlideOf(*presentation, 1)->Shapes());

    ASSERT_EQ(shapes.size(), 1u);
    EXPECT_EQ(shapes[0]->Type(), GetParam().type);
    EXPECT_EQ(shapes[0]->HasTextFrame(), GetParam().hasText ? msoTrue : msoFalse);
    if (GetParam().hasText)
        EXPECT_NE(shapes[0]->TextFrame()->TextRange(), nullptr);
    else
        EXPECT_THAT(RaisedBy([&] { shapes[0]->TextFrame(); }), FailsWith(FailureNumber::InvalidRequest, "no text"));
}

const std::vector<KindOfShape> kinds{
    {"TitlePlaceholder", Title(u"x"), msoPlaceholder, true},
    {"PlaceholderWithoutAType", Content(u"x"), msoPlaceholder, true},
    {"FooterPlaceholder", Footer(u"x"), msoPlaceholder, true},
    {"DatePlaceholder", DateTime(u"x"), msoPlaceholder, true},
    {"NumberPlaceholder", SlideNumber(), msoPlaceholder, true},
    {"SlideImagePlaceholder", SlideImage(), msoPlaceholder, false},
    {"EmptyPicturePlaceholder", Placeholder("pic", 2, Paragraph()), msoPlaceholder, true},
    {"EmptyChartPlaceholder", Placeholder("chart", 2, Paragraph()), msoPlaceholder, true},
    {"EmptyTablePlaceholder", Placeholder("tbl", 2, Paragraph()), msoPlaceholder, true},
    {"EmptyMediaPlaceholder", Placeholder("media", 2, Paragraph()), msoPlaceholder, true},
    {"PlaceholderWithoutText", TextShape(u"x", {.textBody = false}, {}).InPlaceholder("body", 1), msoPlaceholder, true},
    {"PictureInAPlaceholder", Picture().InPlaceholder("pic", 2), msoPlaceholder, false},
    {"ChartInAPlaceholder", Chart().InPlaceholder("chart", 2), msoPlaceholder, false},
    {"TableInAPlaceholder", Table({{Paragraph(u"x")}}).InPlaceholder("tbl", 2), msoPlaceholder, false},
    {"Group", Group(TextBox(u"x")), msoGroup, false},
    {"LineConnector", Connector("line"), msoLine, false},
    {"StraightConnector", Connector("straightConnector1"), msoLine, false},
    {"BentConnector", Connector("bentConnector3"), msoAutoShape, false},
    {"Ink", Ink(), msoInk, false},
    {"Table", Table({{Paragraph(u"x")}}), msoTable, false},
    {"Chart", Chart(), msoChart, false},
    {"LaterChart", ChartEx(), msoChart, false},
    {"Diagram", Diagram(u"x"), msoSmartArt, false},
    {"EmbeddedObject", EmbeddedOle(OleForm::Alternate), msoEmbeddedOLEObject, false},
    {"EmbeddedObjectOf2007", EmbeddedOle(OleForm::Bare), msoEmbeddedOLEObject, false},
    {"LinkedObject", LinkedOle(u"file:///C:\\a.xlsx", OleForm::Alternate), msoLinkedOLEObject, false},
    {"LinkedObjectOf2007", LinkedOle(u"file:///C:\\a.xlsx", OleForm::Bare), msoLinkedOLEObject, false},
    {"Control", OleControl(), msoOLEControlObject, false},
    {"ContentApp", ContentApp(), msoContentApp, false},
    {"Model", Model3D(), mso3DModel, false},
    {"ModelInAFrame", Frame("http://schemas.microsoft.com/office/drawing/2017/model3d"), mso3DModel, false},
    {"UnknownFrame", Frame("http://example.com/x"), msoAutoShape, false},
    {"ObjectWithoutContent", Frame(ole), msoEmbeddedOLEObject, false},
    {"Video", Video(u"file:///C:\\a.mp4"), msoMedia, false},
    {"Audio", PictureWith("<p:nvPr><a:audioFile r:link=\"\"/></p:nvPr>", "<a:blip/>"), msoMedia, false},
    {"WaveAudio", PictureWith("<p:nvPr><a:wavAudioFile r:embed=\"\"/></p:nvPr>", "<a:blip/>"), msoMedia, false},
    {"QuickTime", PictureWith("<p:nvPr><a:quickTimeFile r:link=\"\"/></p:nvPr>", "<a:blip/>"), msoMedia, false},
    {"AudioDisc", PictureWith("<p:nvPr><a:audioCd/></p:nvPr>", "<a:blip/>"), msoMedia, false},
    {"LaterMedia", PictureWith(media, "<a:blip/>"), msoMedia, false},
    {"LinkedPicture", LinkedPicture(u"file:///C:\\a.png"), msoLinkedPicture, false},
    {"LinkedPictureWithACopy", PictureWith("<p:nvPr/>", "<a:blip r:embed=\"\" r:link=\"\"/>"), msoLinkedPicture, false},
    {"VectorPicture", SvgPicture(), msoGraphic, false},
    {"Picture", Picture(), msoPicture, false},
    {"TextBox", TextBox(u"x"), msoTextBox, true},
    {"TextBoxSaidInWords", Sp(" txBox=\"true\"", ""), msoTextBox, true},
    {"NoTextBox", Sp(" txBox=\"0\"", ""), msoAutoShape, true},
    {"FreeTextBox", Sp(" txBox=\"1\"", "<a:custGeom/>"), msoTextBox, true},
    {"Freeform", Freeform(u"x"), msoFreeform, true},
    {"Line", LineShape(), msoLine, false},
    {"TextBoxOfALine", Sp(" txBox=\"1\"", "<a:prstGeom prst=\"line\"><a:avLst/></a:prstGeom>"), msoTextBox, false},
    {"InverseLine", Preset("lineInv"), msoLine, false},
    {"LineCallout", Preset("borderCallout1"), msoAutoShape, true},
    {"AccentCallout", Preset("accentBorderCallout3"), msoAutoShape, true},
    {"CloudCallout", Preset("cloudCallout"), msoAutoShape, true},
    {"Ellipse", AutoShape("ellipse", u"x"), msoAutoShape, true},
    {"NoGeometry", Sp("", ""), msoAutoShape, true},
    {"NoTextBody", WithoutTextBody(), msoAutoShape, true},
    {"WordArt", WordArt(u"x"), msoAutoShape, true},
    {"Hidden", TextBox(u"x").Hidden(), msoTextBox, true},
};

INSTANTIATE_TEST_SUITE_P(Shapes, ShapeKind, testing::ValuesIn(kinds),
                         [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace
}  // namespace tessarine::test
