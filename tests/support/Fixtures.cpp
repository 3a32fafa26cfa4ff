#include "support/Fixtures.h"

namespace tessarine::test::fixtures
{

Deck Runs()
{
    return Deck()
        .Slide(
            Title(u"About Fabrikam"),
            TextBox(Paragraph(TextRun(u"Fab").Size(24).Bold().Misspelled(), TextRun(u"ri").Size(18).Dirty(false),
                              TextRun(u"kam").Size(32).Italic().Language("de-DE"), TextRun(u" "), TextRun(u"GmbH "))))
        .Slide(TextBox(Paragraph(u"Fabrikam and ", TextRun(u"Fabrikam").Bold(), u" again"),
                       Paragraph(TextRun(u"FABRIKAM, fabrikam, Fabrikams").Color("C00000"))));
}

Deck Breaks()
{
    return Deck().Slide(
        Title(Paragraph(u"Fabrikam", LineBreak(), u"in two lines")),
        TextBox(
            Paragraph(u"Fab", LineBreak(TextRun(u"").Size(12)), u"rikam"), Paragraph(), Paragraph(u"\tFabrikam\t"),
            Paragraph(u"Slide ", Field("slidenum", u"1"), u" of Fabrikam on ", Field("datetime1", u"5/6/2024"),
                      Field("footer", u"Fabrikam")),
            Paragraph(u"one\u000BFabrikam"), Paragraph(TextRun(u"R&D <Fabrikam>").AsCData()),
            Paragraph(u"\U0001F600Fabrikam\U0001F680"), Paragraph(RawRun("F&#97;brik<!-- split -->am &amp; <?x y?>Co")),
            Paragraph(TextRun(u"")).EndProperties(TextRun(u"").Size(40)),
            Paragraph(
                Raw{"<mc:AlternateContent xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\">"
                    "<mc:Choice xmlns:a14=\"http://schemas.microsoft.com/office/drawing/2010/main\" Requires=\"a14\">"
                    "<a14:m/></mc:Choice><mc:Fallback><a:r><a:t>x=1</a:t></a:r></mc:Fallback>"
                    "</mc:AlternateContent>"},
                u"Fabrikam")));
}

Deck Shapes()
{
    const std::string office2010 = "http://schemas.microsoft.com/office/powerpoint/2010/main";
    return Deck()
        .Slide(Title(u"Fabrikam title"), Content(u"Fabrikam content"), TextBox(u"Fabrikam box"),
               AutoShape("ellipse", u"Fabrikam ellipse"), AutoShape("borderCallout1", u"Fabrikam callout"),
               AutoShape("wedgeRectCallout", u"Fabrikam wedge"), Freeform(u"Fabrikam freeform"),
               WordArt(u"Fabrikam art"), LineShape(), Connector("straightConnector1"), Connector("bentConnector3"),
               Group(TextBox(u"Fabrikam in a group"), Group(AutoShape("rect", u"Fabrikam deeper"))),
               Table({{Paragraph(u"Fabrikam cell"), Paragraph(u"b")}, {Paragraph(u"c"), Paragraph(u"d")}}),
               WithoutTextBody(), TextBox(u"Fabrikam hidden").Hidden())
        .Slide(Chart(), ChartEx(), Diagram(u"Fabrikam diagram"), Picture().Described(u"Fabrikam logo"),
               LinkedPicture(u"file:///C:\\Fabrikam\\logo.png"), SvgPicture(), Video(u"file:///C:\\Fabrikam\\film.mp4"),
               EmbeddedOle(), LinkedOle(u"file:///C:\\Fabrikam\\a.xlsx!Sheet1!R1C1"), OleControl(), Ink(), ContentApp(),
               Model3D(), Chart().InPlaceholder("chart", 14), Picture().InPlaceholder("pic", 15),
               Placeholder("pic", 16, Paragraph()),
               Alternate("p14", office2010, TextBox(u"Fabrikam choice"), TextBox(u"Fabrikam fallback")),
               Alternate("zzz", "http://example.com/never", TextBox(u"Fabrikam unknown"), TextBox(u"Fabrikam known")))
        .Slide(HiddenSlide(), TextBox(u"Fabrikam on a hidden slide"), Footer(u"Fabrikam footer"), SlideNumber(u"3"),
               DateTime(u"Fabrikam day"));
}

Deck Notes()
{
    return Deck()
        .NotesMaster(Header(u"Fabrikam"), DateTime(u""), SlideImage(), Body(u"Click to edit Master text styles"),
                     Footer(u"Fabrikam"), SlideNumber())
        .Slide(Title(u"One"),
               NotesPage(SlideImage(), Header(u"Fabrikam header"), Body(u"Say Fabrikam\ntwice: Fabrikam"),
                         Footer(u"Fabrikam footer"), SlideNumber(u"1"), TextBox(u"Fabrikam by hand")))
        .Slide(Title(u"Two"))
        .Slide(Title(u"Three"), NotesPage(u"No hit here"));
}

Deck FootersWithoutMasters()
{
    return Deck()
        .Slide(Title(u"Without a footer"))
        .Slide(Title(u"With one"), Footer(u"Fabrikam 2024"))
        .Slide(Title(u"With one in two runs"), Footer(Paragraph(TextRun(u"Fab").Bold(), u"rikam 2025")),
               SlideNumber(u"3"));
}

Deck Footers()
{
    return FootersWithoutMasters()
        .NotesMaster(Header(u"Fabrikam notes head"), SlideImage(), Body(u"Text"), Footer(u"Fabrikam notes foot"))
        .HandoutMaster(Header(u"Fabrikam handout head"), Footer(u"Fabrikam handout foot"));
}

Deck FootersWithoutHeader()
{
    return FootersWithoutMasters()
        .NotesMaster(SlideImage(), Body(u"Text"), Footer(u"Fabrikam notes foot"))
        .HandoutMaster(Footer(u"Fabrikam handout foot"));
}

Deck Links()
{
    const auto text = [](Hyperlink link) { return TextBox(Paragraph(TextRun(u"link").Click(std::move(link)))); };
    return Deck()
        .Slide(text(LinkTo(u"https://www.fabrikam.com/a?b=1&c=%26%2F#top")),
               text(LinkTo(u"mailto:sales@fabrikam.com?subject=Fabrikam%20offer&cc=a@b")),
               text(LinkTo(u"file:///C:\\Fabrikam\\A%20B.docx").Action("ppaction://hlinkfile")),
               text(LinkTo(u"file:///\\\\server\\Fabrikam\\a.xlsx").Action("ppaction://hlinkfile")),
               text(LinkTo(u"../Fabrikam/a%20b.docx").Action("ppaction://hlinkfile")),
               text(LinkTo(u"other%20Fabrikam.pptx").Action("ppaction://hlinkpres?slideindex=2&slidetitle=Fabrikam")),
               text(LinkTo(u"#Fabrikam")), text(LinkToSlide(2)),
               text(LinkWithoutTarget().Action("ppaction://noaction")),
               text(LinkWithoutTarget().Action("ppaction://hlinkshowjump?jump=nextslide")),
               text(LinkWithoutTarget().InvalidUrl(u"http://[fabrikam")),
               text(LinkTo(u"C:\\Fabrikam\\run.exe").Action("ppaction://program")))
        .Slide(Picture().Click(LinkTo(u"http://fabrikam.com/picture").Tooltip(u"Fabrikam & more")),
               TextBox(u"shape").Hover(LinkTo(u"http://fabrikam.com/hover")),
               TextBox(Paragraph(TextRun(u"one ").Click(LinkTo(u"http://fabrikam.com/shared").Shared()),
                                 TextRun(u"two").Bold().Click(LinkTo(u"http://fabrikam.com/shared").Shared()),
                                 LineBreak(TextRun(u"").Click(LinkTo(u"http://fabrikam.com/shared").Shared())),
                                 TextRun(u"over").Hover(LinkTo(u"http://fabrikam.com/text-hover")))),
               TextBox(Paragraph(TextRun(u"elsewhere").Click(LinkTo(u"http://fabrikam.com/shared").Shared()))),
               Group(text(LinkTo(u"http://fabrikam.com/group")),
                     Group(AutoShape("rect", u"x").Click(LinkTo(u"http://fabrikam.com/deep")))),
               Table({{Paragraph(TextRun(u"cell").Click(LinkTo(u"http://fabrikam.com/cell")))}}),
               Connector().Click(LinkTo(u"http://fabrikam.com/line")),
               Chart().Click(LinkTo(u"http://fabrikam.com/chart")));
}

Deck Masters()
{
    return Deck()
        .Master(SlideMaster(
            u"Office Theme", Title(u"Fabrikam master title"), Footer(u"Fabrikam"),
            Layout("title", CenteredTitle(u"Fabrikam title page"), TextBox(u"Fabrikam")).Named(u"Title Slide"),
            Layout("obj", Title(u"Fabrikam content page")).Named(u"Title and Content")))
        .Master(SlideMaster(u"Office Theme", Title(u"Fabrikam second master"), Layout("obj", Title(u"Fabrikam"))))
        .Master(SlideMaster(u"", Title(u"Fabrikam unused"), Layout("blank")).Preserve())
        .Slide(Title(u"On the first"), OnLayout{.master = 1, .layout = 1})
        .Slide(Title(u"On the first as well"), OnLayout{.master = 1, .layout = 2})
        .Slide(Title(u"On the second"), OnLayout{.master = 2, .layout = 1});
}

Deck AllProperties()
{
    auto deck = Deck().Slide(Title(u"Fabrikam"));
    for (const char* element :
         {"dc:title", "dc:subject", "dc:creator", "cp:keywords", "dc:description", "cp:lastModifiedBy", "cp:category",
          "cp:contentStatus", "cp:contentType", "dc:language", "cp:version"})
        deck.Core(element, u"Fabrikam " + FromUtf8(element));
    deck.Core("cp:revision", u"6");
    for (const char* element : {"cp:lastPrinted", "dcterms:created", "dcterms:modified"})
        deck.Core(element, u"2024-05-06T07:08:09Z");
    for (const char* element : {"Template", "Manager", "Company", "PresentationFormat", "HyperlinkBase", "Application"})
        deck.App(element, u"Fabrikam " + FromUtf8(element));
    for (const char* element : {"TotalTime", "Words", "Paragraphs", "Slides", "Notes", "HiddenSlides", "MMClips",
                                "Pages", "Characters", "Lines", "CharactersWithSpaces", "DocSecurity"})
        deck.App(element, u"12");
    return deck;
}

Deck NoProperties()
{
    return Deck().Slide(Title(u"Fabrikam"));
}

Deck CustomProperties()
{
    return Deck()
        .Slide(Title(u"Fabrikam"))
        .Custom(u"Text", "lpwstr", u"Fabrikam")
        .Custom(u"Old text", "lpstr", u"Fabrikam")
        .Custom(u"Basic text", "bstr", u"Fabrikam")
        .Custom(u"i1", "i1", u"-1")
        .Custom(u"i2", "i2", u"-300")
        .Custom(u"Revision", "i4", u"3")
        .Custom(u"int", "int", u"3")
        .Custom(u"i8", "i8", u"9007199254740993")
        .Custom(u"ui1", "ui1", u"255")
        .Custom(u"ui2", "ui2", u"65535")
        .Custom(u"ui4", "ui4", u"4294967295")
        .Custom(u"uint", "uint", u"3")
        .Custom(u"ui8", "ui8", u"18446744073709551615")
        .Custom(u"r4", "r4", u"1.5")
        .Custom(u"r8", "r8", u"1.25E+20")
        .Custom(u"decimal", "decimal", u"2.50")
        .Custom(u"cy", "cy", u"19.99")
        .Custom(u"Yes", "bool", u"true")
        .Custom(u"No", "bool", u"0")
        .Custom(u"filetime", "filetime", u"2024-05-06T07:08:09Z")
        .Custom(u"date", "date", u"2024-05-06T00:00:00Z")
        .Custom(u"empty", "empty", u"")
        .Custom(u"null", "null", u"")
        .Custom(u"clsid", "clsid", u"{B6F15528-21DE-4FAA-801E-634DDDAF4B2B}")
        .Custom(u"blob", "blob", u"RmFicmlrYW0=")
        .CustomXml(u"vector", "<vt:vector size=\"1\" baseType=\"lpwstr\"><vt:lpwstr>Fabrikam</vt:lpwstr></vt:vector>")
        .Custom(u"Linked", "lpwstr", u"Fabrikam", u"Bookmark")
        .Custom(u"Größe", "lpwstr", u"Fabrikam & Söhne")
        .Custom(u"text", "lpwstr", u"Fabrikam twin of the first")
        .MarkAsFinal();
}

Deck Ole()
{
    return Deck()
        .Slide(LinkedOle(u"file:///C:\\Fabrikam%20Data\\Book%201.xlsx!Sheet1!R1C1:R5C5"),
               LinkedOle(u"file:///\\\\server\\Fabrikam\\a.docx!OLE_LINK1", OleForm::Bare))
        .Slide(LinkedOle(u"file:///C:\\Fabrikam\\in%20placeholder.xlsx!A1").InPlaceholder("obj", 14), EmbeddedOle(),
               EmbeddedOle(OleForm::Bare))
        .Slide(LinkedOle(u"https://fabrikam.sharepoint.com/a%20b.xlsx!Sheet1!R1C1"));
}

}  // namespace tessarine::test::fixtures
