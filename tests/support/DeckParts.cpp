#include "support/DeckParts.h"

namespace tessarine::test
{
namespace
{

const std::string ContentTypeBase = "application/vnd.openxmlformats-officedocument.presentationml.";
const std::string ColorMap =
    " bg1=\"lt1\" tx1=\"dk1\" bg2=\"lt2\" tx2=\"dk2\" accent1=\"accent1\" accent2=\"accent2\" accent3=\"accent3\" "
    "accent4=\"accent4\" accent5=\"accent5\" accent6=\"accent6\" hlink=\"hlink\" folHlink=\"folHlink\"/>";
const std::string MasterColorMap = "<p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr>";

std::string PartName(const std::string& kind, int number)
{
    return "ppt/" + kind + "s/" + kind + std::to_string(number) + ".xml";
}

std::string SlideDataXml(PartWriter& part, const std::vector<Shape>& shapes, StringView name = {},
                         const std::string& background = {})
{
    std::string xml = name.empty() ? "<p:cSld>" : "<p:cSld name=\"" + XmlAttribute(name) + "\">";
    if (!background.empty()) {
        xml += "<p:bg><p:bgPr><a:solidFill><a:srgbClr val=\"" + background +
               "\"/></a:solidFill><a:effectLst/></p:bgPr></p:bg>";
    }
    xml +=
        "<p:spTree><p:nvGrpSpPr><p:cNvPr id=\"1\" name=\"\"/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr><p:grpSpPr><a:xfrm>"
        "<a:off x=\"0\" y=\"0\"/><a:ext cx=\"0\" cy=\"0\"/><a:chOff x=\"0\" y=\"0\"/><a:chExt cx=\"0\" "
        "cy=\"0\"/></a:xfrm>"
        "</p:grpSpPr>";
    for (const Shape& shape : shapes)
        xml += shape.Xml(part);
    xml += "</p:spTree>";
    if (!part.Controls().empty())
        xml += "<p:controls>" + part.Controls() + "</p:controls>";
    return xml + "</p:cSld>";
}

std::string WriteTheme(PackageParts& package, StringView name)
{
    const std::string part = "ppt/theme/theme" + std::to_string(package.NextNumber("theme")) + ".xml";
    package.Put(part, ThemeXml(name), "application/vnd.openxmlformats-officedocument.theme+xml");
    return part;
}

}  // namespace

NotesPage& NotesPage::Add(Shape shape)
{
    shapes_.push_back(std::move(shape));
    return *this;
}

void NotesPage::Write(PartWriter& slide, const std::string& notesMaster) const
{
    const std::string name = PartName("notesSlide", slide.Package().NextNumber("notesSlide"));
    slide.Relate("notesSlide", name);
    PartWriter part(slide.Package(), name);
    part.Relate("notesMaster", notesMaster);
    part.Relate("slide", slide.Name());
    part.Finish(XmlDeclaration() + "<p:notes" + RootNamespaces() + ">" + SlideDataXml(part, shapes_) + MasterColorMap +
                    "</p:notes>",
                ContentTypeBase + "notesSlide+xml");
}

SlideContent& SlideContent::Add(Shape shape)
{
    shapes_.push_back(std::move(shape));
    return *this;
}

SlideContent& SlideContent::Add(NotesPage notes)
{
    notes_ = std::move(notes);
    return *this;
}

SlideContent& SlideContent::Add(HiddenSlide)
{
    hidden_ = true;
    return *this;
}

SlideContent& SlideContent::Add(OnLayout layout)
{
    layout_ = layout;
    return *this;
}

SlideContent& SlideContent::Add(NamedSlide name)
{
    name_ = std::move(name.name);
    return *this;
}

SlideContent& SlideContent::Add(Related relationship)
{
    relationships_.push_back(std::move(relationship));
    return *this;
}

void SlideContent::Write(PackageParts& package, int number, const std::string& layoutPart,
                         const std::string& notesMaster) const
{
    PartWriter part(package, PartName("slide", number));
    part.Relate("slideLayout", layoutPart);
    for (const Related& related : relationships_)
        part.RelateAs(related.id, related.type, related.target, related.external);
    if (notes_)
        notes_->Write(part, notesMaster);
    part.Finish(XmlDeclaration() + "<p:sld" + RootNamespaces() + (hidden_ ? " show=\"0\"" : "") + ">" +
                    SlideDataXml(part, shapes_, name_) + MasterColorMap + "</p:sld>",
                ContentTypeBase + "slide+xml");
}

Layout& Layout::Named(String name)
{
    name_ = std::move(name);
    return *this;
}

void Layout::Write(PartWriter& part, const std::string& master) const
{
    part.Relate("slideMaster", master);
    const std::string type = type_.empty() ? std::string() : " type=\"" + type_ + "\"";
    part.Finish(XmlDeclaration() + "<p:sldLayout" + RootNamespaces() + type + " preserve=\"1\">" +
                    SlideDataXml(part, shapes_, name_) + MasterColorMap + "</p:sldLayout>",
                ContentTypeBase + "slideLayout+xml");
}

SlideMaster& SlideMaster::Add(Shape shape)
{
    shapes_.push_back(std::move(shape));
    return *this;
}

SlideMaster& SlideMaster::Add(Layout layout)
{
    layouts_.push_back(std::move(layout));
    return *this;
}

SlideMaster& SlideMaster::Preserve()
{
    preserve_ = true;
    return *this;
}

SlideMaster& SlideMaster::Background(std::string rgb)
{
    background_ = std::move(rgb);
    return *this;
}

SlideMaster& SlideMaster::TextStyles(std::string raw)
{
    textStyles_ = std::move(raw);
    return *this;
}

SlideMaster& SlideMaster::WithoutTheme()
{
    theme_ = false;
    return *this;
}

void SlideMaster::Write(PackageParts& package, int number, int firstLayout, std::int64_t firstId) const
{
    PartWriter part(package, PartName("slideMaster", number));
    const std::vector<Layout> layouts =
        layouts_.empty() ? std::vector<Layout>{Layout("obj").Named(u"Title and Content")} : layouts_;

    std::string list;
    for (const Layout& layout : layouts) {
        const std::string name = LayoutPart(firstLayout++);
        list += "<p:sldLayoutId id=\"" + std::to_string(firstId++) + "\" r:id=\"" + part.Relate("slideLayout", name) +
                "\"/>";
        PartWriter layoutPart(package, name);
        layout.Write(layoutPart, part.Name());
    }
    if (theme_)
        part.Relate("theme", WriteTheme(package, themeName_));
    part.Finish(XmlDeclaration() + "<p:sldMaster" + RootNamespaces() + (preserve_ ? " preserve=\"1\"" : "") + ">" +
                    SlideDataXml(part, shapes_, {}, background_) + "<p:clrMap" + ColorMap + "<p:sldLayoutIdLst>" +
                    list + "</p:sldLayoutIdLst>" + textStyles_ + "</p:sldMaster>",
                ContentTypeBase + "slideMaster+xml");
}

void WritePageMaster(PackageParts& package, PageMaster kind, const std::vector<Shape>& shapes)
{
    const std::string name = kind == PageMaster::Notes ? "notesMaster" : "handoutMaster";
    PartWriter part(package, PartName(name, 1));
    part.Relate("theme", WriteTheme(package, u"Office Theme"));
    part.Finish(XmlDeclaration() + "<p:" + name + RootNamespaces() + ">" + SlideDataXml(part, shapes) + "<p:clrMap" +
                    ColorMap + "</p:" + name + ">",
                ContentTypeBase + name + "+xml");
}

std::string ThemeXml(StringView name)
{
    const std::string fonts = "<a:latin typeface=\"Calibri\"/><a:ea typeface=\"\"/><a:cs typeface=\"\"/>";
    const std::string fill = "<a:solidFill><a:schemeClr val=\"phClr\"/></a:solidFill>";
    const std::string line = "<a:ln w=\"6350\">" + fill + "</a:ln>";
    const std::string effect = "<a:effectStyle><a:effectLst/></a:effectStyle>";
    std::string colors =
        "<a:dk1><a:srgbClr val=\"000000\"/></a:dk1><a:lt1><a:srgbClr val=\"FFFFFF\"/></a:lt1><a:dk2><a:srgbClr "
        "val=\"44546A\"/></a:dk2><a:lt2><a:srgbClr val=\"E7E6E6\"/></a:lt2>";
    int number = 0;
    for (const char* color : {"4472C4", "ED7D31", "A5A5A5", "FFC000", "5B9BD5", "70AD47"}) {
        const std::string accent = "a:accent" + std::to_string(++number);
        colors += "<" + accent + "><a:srgbClr val=\"" + color + "\"/></" + accent + ">";
    }
    return XmlDeclaration() + "<a:theme xmlns:a=\"" + std::string(Uri::Drawing) + "\" name=\"" + XmlAttribute(name) +
           "\"><a:themeElements><a:clrScheme name=\"Office\">" + colors +
           "<a:hlink><a:srgbClr val=\"0563C1\"/></a:hlink><a:folHlink><a:srgbClr "
           "val=\"954F72\"/></a:folHlink></a:clrScheme>"
           "<a:fontScheme name=\"Office\"><a:majorFont>" +
           fonts + "</a:majorFont><a:minorFont>" + fonts +
           "</a:minorFont></a:fontScheme><a:fmtScheme name=\"Office\">" + "<a:fillStyleLst>" + fill + fill + fill +
           "</a:fillStyleLst><a:lnStyleLst>" + line + line + line + "</a:lnStyleLst><a:effectStyleLst>" + effect +
           effect + effect + "</a:effectStyleLst><a:bgFillStyleLst>" + fill + fill + fill +
           "</a:bgFillStyleLst></a:fmtScheme></a:themeElements></a:theme>";
}

std::string LayoutPart(int number)
{
    return PartName("slideLayout", number);
}

}  // namespace tessarine::test
