#include "support/BinarySamples.h"

#include "support/LittleEndian.h"

namespace tessarine::test::ppt
{

namespace
{

/// Runs that differ in look and language, links, fields and marks.
Text RichText()
{
    return Text(TextRun(u"Fabrikam ").Size(20).Click(LinkTo(u"https://fabrikam.example/")),
                TextRun(u"GmbH ").Bold().Hover(LinkToSlide(2)), Field(FieldKind::SlideNumber),
                TextRun(u"\rgr\u00FC\u00DFt").Language(0x0407), TextRun(u" Fab").Italic(), u"rikam")
        .Levels({0, 1})
        .Bookmark(0, 3, 1);
}

}  // namespace

BinaryDeck DeckWithEverything()
{
    return BinaryDeck()
        .Master(MainMaster(u"Fabrikam", Placeholder(MasterTitle, TitleText, u"Fabrikam title"),
                           Placeholder(MasterBody, BodyText, u"Fabrikam body"))
                    .TitleMaster(Placeholder(MasterCenterTitle, CenterTitleText, u"Fabrikam centered")))
        .NotesMaster(Placeholder(MasterNotesBody, NotesText, u"Fabrikam notes"))
        .HandoutMaster(TextBox(u"Fabrikam handout"))
        .SlideFooters(HeadersFooters().Footer(u"Fabrikam footer"))
        .NotesFooters(HeadersFooters().Header(u"Fabrikam header").FooterWithoutText())
        .Slide(OnTitleMaster{}, CenterTitle(u"Fabrikam"), Body(RichText()), TextBox(RichText()),
               Group(AutoShape(3, u"Fabrikam"), Group(TextBox(u"a", u"Fabrikam"))),
               Table({{Text(u"Fabrikam"), Text(u"GmbH")}, {Text(u"a"), Text(u"Fabrikam")}}), Freeform(u"Fabrikam"),
               Line().Click(LinkToFile(u"C:\\Fabrikam.doc")), Picture(), Movie(u"Fabrikam.avi"), EmbeddedOle(),
               LinkedOle(u"C:\\Fabrikam.xls", u"Sheet1!R1C1"), WordArt(u"Fabrikam"),
               FooterShape(u"Fabrikam in a shape"), NotesPage(RichText()))
        .Slide(Title(u"\u732B Fabrikam"), HeadersFooters().Footer(u"Fabrikam, slide 2"), HiddenSlide())
        .Summary(2, TextValue("Fabrikam"))
        .Summary(9, TextValue("3"))
        .DocumentSummary(15, WideValue(u"Fabrikam \u20AC"))
        .Custom("Client", TextValue("Fabrikam"))
        .Custom("_PID_LINKBASE", BlobValue(little::Wide(u"https://fabrikam.example/") + little::Short(0)));
}

}  // namespace tessarine::test::ppt
