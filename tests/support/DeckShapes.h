#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/DeckText.h"

/// Shapes of a deck under construction. Functions make them, members dress them:
/// `TextBox(u"Fabrikam").Named(u"Owner").Hidden()`.
namespace tessarine::test
{

/// Place and size in EMU (914400 an inch).
struct Rectangle {
    std::int64_t x = 0;
    std::int64_t y = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;
};

/// Place and size in hundredths of an inch; a slide has 1333 by 750 of them.
Rectangle At(int x, int y, int width, int height);

/// One shape of a slide, notes page, layout or master.
class Shape
{
public:
    /// Gives the XML of the whole shape.
    using Writer = std::function<std::string(const Shape&, PartWriter&)>;

    Shape(String name, Writer writer) : name_(std::move(name)), writer_(std::move(writer)) {}

    Shape& Named(String name);
    Shape& Described(String alternativeText);
    Shape& Hidden();  ///< hidden="1"; its text is there all the same.
    Shape& Place(Rectangle place);
    Shape& Click(Hyperlink link);  ///< A link of the whole shape, not of its text.
    Shape& Hover(Hyperlink link);

    /// Puts the shape into a placeholder: p:ph with a type ("" for none) and an index (-1 for none).
    Shape& InPlaceholder(std::string type, int index = -1);

    std::string Xml(PartWriter& part) const { return writer_(*this, part); }

    /// p:cNvPr with a fresh id, name, links.
    std::string NonVisualXml(PartWriter& part) const;

    /// p:nvPr, with p:ph where the shape is a placeholder and `inner` as further children.
    std::string ApplicationXml(const std::string& inner = {}) const;

    /// a:xfrm under the name given, "" when the shape has no place of its own.
    std::string TransformXml(const std::string& element) const;

private:
    String name_;
    Writer writer_;
    String description_;
    bool hidden_ = false;
    std::optional<Rectangle> place_;
    std::optional<Hyperlink> click_;
    std::optional<Hyperlink> hover_;
    std::optional<std::pair<std::string, int>> placeholder_;
};

/// What a p:sp may be: a text box, a preset or a free geometry, with or without a text body.
struct Geometry {
    std::string preset{};  ///< "rect"; empty for none.
    bool free = false;     ///< a:custGeom
    bool textBox = false;  ///< txBox="1"
    bool textBody = true;  ///< False leaves p:txBody out.
    std::string bodyProperties = "<a:bodyPr/>";
    std::string listStyle = "<a:lstStyle/>";
};

/// The floor of all shapes with text.
Shape TextShape(String name, Geometry geometry, std::vector<Paragraph> paragraphs);

/// Paragraphs from what tests write: a text (one paragraph a line), runs (one paragraph), paragraphs.
std::vector<Paragraph> ToParagraphs(StringView text);
std::vector<Paragraph> ToParagraphs(TextRun run);
std::vector<Paragraph> ToParagraphs(Paragraph paragraph);
std::vector<Paragraph> ToParagraphs(std::vector<Paragraph> paragraphs);
template <class First, class Second, class... More>
std::vector<Paragraph> ToParagraphs(First first, Second second, More... more)
{
    std::vector<Paragraph> all;
    for (auto part :
         {ToParagraphs(std::move(first)), ToParagraphs(std::move(second)), ToParagraphs(std::move(more))...})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

/// Each takes a text, or any number of paragraphs.
template <class... Text>
Shape TextBox(Text... text)
{
    return TextShape(u"TextBox", {.preset = "rect", .textBox = true}, ToParagraphs(std::move(text)...));
}
template <class... Text>
Shape AutoShape(const std::string& preset, Text... text)
{
    return TextShape(u"Shape", {.preset = preset}, ToParagraphs(std::move(text)...));
}
template <class... Text>
Shape Freeform(Text... text)
{
    return TextShape(u"Freeform", {.free = true}, ToParagraphs(std::move(text)...));
}
template <class... Text>
Shape WordArt(Text... text)
{
    return TextShape(
        u"WordArt",
        {.preset = "rect",
         .bodyProperties = "<a:bodyPr><a:prstTxWarp prst=\"textWave1\"><a:avLst/></a:prstTxWarp></a:bodyPr>"},
        ToParagraphs(std::move(text)...));
}
template <class... Text>
Shape Placeholder(const std::string& type, int index, Text... text)
{
    return TextShape(u"Placeholder", {}, ToParagraphs(std::move(text)...)).InPlaceholder(type, index);
}

template <class... Text>
Shape Title(Text... text)
{
    return Placeholder("title", -1, std::move(text)...).Named(u"Title");
}
template <class... Text>
Shape CenteredTitle(Text... text)
{
    return Placeholder("ctrTitle", -1, std::move(text)...).Named(u"Title");
}
template <class... Text>
Shape Subtitle(Text... text)
{
    return Placeholder("subTitle", 1, std::move(text)...).Named(u"Subtitle");
}
template <class... Text>
Shape Body(Text... text)
{
    return Placeholder("body", 1, std::move(text)...).Named(u"Text Placeholder");
}
template <class... Text>
Shape Content(Text... text)
{
    return Placeholder("", 1, std::move(text)...).Named(u"Content Placeholder");
}

/// Header, footer, date and slide number placeholders, on slides, notes pages and masters alike.
template <class... Text>
Shape Footer(Text... text)
{
    return Placeholder("ftr", 11, std::move(text)...).Named(u"Footer Placeholder");
}
template <class... Text>
Shape Header(Text... text)
{
    return Placeholder("hdr", 12, std::move(text)...).Named(u"Header Placeholder");
}
template <class... Text>
Shape DateTime(Text... text)
{
    return Placeholder("dt", 10, std::move(text)...).Named(u"Date Placeholder");
}
Shape SlideNumber(String cached = u"\u2039#\u203A");  ///< A slidenum field; the default is what masters hold.
Shape SlideImage();                                   ///< The picture of the slide on a notes page.

Shape WithoutTextBody();  ///< A rectangle with no p:txBody.
Shape LineShape();        ///< p:sp with the geometry of a line.
Shape Connector(const std::string& preset = "line");
Shape Picture();                     ///< A small PNG.
Shape LinkedPicture(String target);  ///< a:blip with r:link alone.
Shape SvgPicture();                  ///< A picture with a vector original.
Shape Video(String target);          ///< A picture with a:videoFile, linked.
Shape Table(std::vector<std::vector<Paragraph>> rows);
Shape Chart();               ///< A chart part with a title and one cached series.
Shape ChartEx();             ///< A chart of the later kind, in AlternateContent with a text fallback.
Shape Diagram(String text);  ///< A diagram, its data part and its drawing cache both hold the text.
Shape Ink();                 ///< p14:contentPart in AlternateContent with a picture as fallback.
Shape ContentApp();          ///< A web extension's frame.
Shape Model3D();             ///< A 3D model in AlternateContent with a picture as fallback.

/// How an OLE frame is written: as 2007 did, or in AlternateContent as later versions do.
enum class OleForm { Bare, Alternate };
Shape EmbeddedOle(OleForm form = OleForm::Alternate);
Shape LinkedOle(String target,
                OleForm form = OleForm::Alternate);  ///< `target` as in the relationship, "file:///C:\\a.xlsx!A1".
Shape OleControl();                                  ///< A frame, and after the shape tree the p:control that names it.

/// Members keep their order; groups nest.
Shape GroupOf(std::vector<Shape> members);
template <class... Members>
Shape Group(Members... members)
{
    return GroupOf({std::move(members)...});
}

/// mc:AlternateContent with the first shape in a Choice that requires `prefix`, and the second as Fallback.
Shape Alternate(std::string prefix, std::string namespaceUri, Shape choice, Shape fallback);

/// A shape whose whole XML is given, ids included.
Shape RawShape(std::string xml);

}  // namespace tessarine::test
