#include <optional>
#include <ostream>
#include <utility>

#include "TextBoxOnDisk.h"

namespace tessarine::test
{
namespace
{

/// A way to write a text in a part.
struct Writing {
    const char* name;
    std::string paragraphs;
    String text;  ///< Stands in it.
};

void PrintTo(const Writing& writing, std::ostream* out)
{
    *out << writing.name;
}

bool MayHold(const TextBoxOnDisk& box, const String& text)
{
    return SlideOf(*box.File().Open(), 1)->Shapes()->MayHoldText(text);
}

class TextHint : public testing::TestWithParam<Writing>
{
};

TEST_P(TextHint, NeverDeniesATextThatIsFound)
{
    const TextBoxOnDisk box(GetParam().paragraphs);

    ASSERT_NE(box.Find(GetParam().text, {.matchCase = false}), 0);
    EXPECT_TRUE(MayHold(box, GetParam().text));
}

const std::string drawing = "\"http://schemas.openxmlformats.org/drawingml/2006/main\"";

const std::vector<Writing> writings{
    {"Plain", P(R("Fabrikam")), u"Fabrikam"},
    {"OtherCase", P(R("FABRIKAM \u00C4\u0416")), u"fabrikam \u00E4\u0436"},
    {"OneUnit", P(R("x")), u"x"},
    {"OverRuns", P(R("Fab", "b=\"1\"") + R("ri") + R("kam")), u"Fabrikam"},
    {"OverEmptyRuns", P(R("Fab") + "<a:r><a:t/></a:r><a:r><a:t></a:t></a:r><a:r/>" + R("rikam")), u"Fabrikam"},
    {"OverAField", P(R("Fab") + "<a:fld id=\"{1}\" type=\"x\"><a:rPr/><a:pPr/><a:t>ri</a:t></a:fld>" + R("kam")),
     u"Fabrikam"},
    {"OverBreaks", P(R("Fab") + Br + R("ri")) + P(R("kam")), u"Fab\vri\rkam"},
    {"Tab", P(R("a\tb")), u"a\tb"},
    {"References", P(R("R&amp;D &#70;abri&#x6B;am")), u"R&D Fabrikam"},
    {"CharacterData", P(R("Fab<![CDATA[<rik]]>am")), u"Fab<rikam"},
    {"Comment", P(R("Fab<!-- > -->rikam")), u"Fabrikam"},
    {"Instruction", P(R("Fab<?x > ?>rikam")), u"Fabrikam"},
    {"CommentBetweenRuns", P(R("Fab") + "<!-- <a:t>no</a:t> -->" + R("rikam")), u"Fabrikam"},
    {"BracketInText", P(R("a>b>") + R(">c")), u"a>b>>c"},
    {"Escape", P(R("a_x000B_b")), u"a\vb"},
    {"EscapedUnderscore", P(R("a_x005F_x000B_b")), u"a_x000B_b"},
    {"EscapeByReference", P(R("a&#95;x005F_x000B_b")), u"a_x000B_b"},
    {"EscapesByReferences", P(R("a&#95;x005F&#95;x000B_b")), u"a_x000B_b"},
    {"LineEnd", P(R("a\r\nb")), u"a\nb"},
    {"BlanksInTheTag", P("<a:r><a:t  >Fabrikam</a:t  ></a:r>"), u"Fabrikam"},
    {"LineEndInTheTag", P("<a:r><a:t\n>Fabrikam</a:t\n></a:r>"), u"Fabrikam"},
    {"AttributeOfTheTag", P("<a:r><a:t xml:space=\"preserve\"> Fabrikam</a:t></a:r>"), u" Fabrikam"},
    {"BracketInAnAttribute", P("<a:r><a:t xml:x='>'>Fabrikam</a:t></a:r>"), u"Fabrikam"},
    {"BracketAndSlashInAnAttribute", P(R("Fab", "lang=\"/>\"") + R("rikam", "lang='>'")), u"Fabrikam"},
    {"OtherPrefix", "<d:p xmlns:d=" + drawing + "><d:r><d:t>Fabrikam</d:t></d:r></d:p>", u"Fabrikam"},
    {"NoPrefix", "<p xmlns=" + drawing + "><r><t>Fab</t></r><r><t>rikam</t></r></p>", u"Fabrikam"},
    {"BeyondThePlane", P(R("\U0001F600\U00010400")), u"\U0001F600\U00010428"},
};

const std::string foreignText = "<x:t xmlns:x=\"http://example.com/\">zz</x:t>";
const std::string nestedRun = "<a:r><a:rPr/><a:t>zz</a:t></a:r>";

std::string Extension(const std::string& content)
{
    return "<a:extLst><a:ext uri=\"{1}\">" + content + "</a:ext></a:extLst>";
}

/// Two runs, the second one with content of its own in front of its text.
std::string SecondRunWith(const std::string& content)
{
    return P(R("Fab") + "<a:r>" + content + "<a:t>rikam</a:t></a:r>");
}

/// Text in places where no program writes any, which is no text of the shape.
const std::vector<Writing> strange{
    {"ForeignT", SecondRunWith("<a:rPr>" + Extension(foreignText) + "</a:rPr>"), u"Fabrikam"},
    {"SecondT", P("<a:r><a:t>Fab</a:t><a:t>zz</a:t></a:r>" + R("rikam")), u"Fabrikam"},
    {"SecondTAfterAnEmptyOne", P(R("Fab") + "<a:r><a:t/><a:t>zz</a:t></a:r>" + R("rikam")), u"Fabrikam"},
    {"ElementInText", P(R("Fab<a:x/>rikam")), u"Fabrikam"},
    {"RunInProperties", SecondRunWith("<a:rPr>" + Extension(nestedRun) + "</a:rPr>"), u"Fabrikam"},
    {"RunsInProperties", SecondRunWith("<a:rPr>" + Extension(nestedRun + "<a:r><a:rPr/></a:r>") + "</a:rPr>"),
     u"Fabrikam"},
    {"TextInProperties", SecondRunWith("<a:rPr><a:t>zz</a:t></a:rPr>"), u"Fabrikam"},
    {"RunInALink", SecondRunWith("<a:rPr><a:hlinkClick r:id=\"\">" + Extension(nestedRun) + "</a:hlinkClick></a:rPr>"),
     u"Fabrikam"},
    {"RunInPropertiesOfAField",
     P(R("Fab") + "<a:fld id=\"{1}\" type=\"x\"><a:rPr>" + Extension(nestedRun) +
       "</a:rPr><a:pPr/><a:t>rikam</a:t></a:fld>"),
     u"Fabrikam"},
    {"RunInAForeignChild", SecondRunWith("<x:y xmlns:x=\"http://example.com/\">" + nestedRun + "</x:y>"), u"Fabrikam"},
};
INSTANTIATE_TEST_SUITE_P(Strange, TextHint, testing::ValuesIn(strange),
                         [](const auto& tested) { return std::string(tested.param.name); });

INSTANTIATE_TEST_SUITE_P(Writings, TextHint, testing::ValuesIn(writings),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(TextHints, DenyWhatIsNowhere)
{
    const TextBoxOnDisk box(P(R("Fab") + R("rikam")));

    EXPECT_FALSE(MayHold(box, u"Contoso"));
    EXPECT_FALSE(MayHold(box, u"Fabrikams"));
}

TEST(TextHints, KnowWhatAnEditPut)
{
    const TextBoxOnDisk box(P(R("Fabrikam")));
    const auto presentation = box.File().Open();
    const auto shapes = SlideOf(*presentation, 1)->Shapes();
    ASSERT_FALSE(shapes->MayHoldText(u"Contoso"));

    ReplaceInShape(*presentation, 1, 1, u"Fabrikam", u"Contoso");

    EXPECT_TRUE(shapes->MayHoldText(u"Contoso"));
}

/// What a run's walks do for one text: all slides, then all notes pages.
void WalkAll(powerpoint::Presentation& presentation, const String& text)
{
    const auto slides = presentation.Slides()->NewEnum();
    while (const auto slide = slides->Next())
        slide->Shapes()->MayHoldText(text);
    presentation.NotesMayHoldText(text);
}

TEST(TextHints, OfAllSlidesAndOfAllNotesTellThemApart)
{
    const DeckOnDisk deck(Deck().Slide(Title(u"Fabrikam")).Slide(Title(u"b"), NotesPage(u"Contoso")));
    const auto presentation = deck.Open();
    WalkAll(*presentation, u"anything");

    EXPECT_TRUE(presentation->Slides()->MayHoldText(u"fabrikam"));
    EXPECT_FALSE(presentation->NotesMayHoldText(u"fabrikam"));
    EXPECT_FALSE(presentation->Slides()->MayHoldText(u"contoso"));
    EXPECT_TRUE(presentation->NotesMayHoldText(u"contoso"));
    EXPECT_FALSE(presentation->Slides()->MayHoldText(u"Fabcon"));
    EXPECT_TRUE(presentation->Slides()->MayHoldText(u"f"));
    EXPECT_TRUE(presentation->Slides()->MayHoldText(u"a\rb"));
}

TEST(TextHints, OfAllSlidesKnowWhatAnEditPut)
{
    const DeckOnDisk deck(Deck().Slide(Title(u"Fabrikam")).Slide(Title(u"b")));
    const auto presentation = deck.Open();
    WalkAll(*presentation, u"anything");
    ASSERT_FALSE(presentation->Slides()->MayHoldText(u"Contoso"));

    ReplaceInShape(*presentation, 1, 1, u"Fabrikam", u"Contoso");

    EXPECT_TRUE(presentation->Slides()->MayHoldText(u"Contoso"));
}

TEST(TextHints, OfAPageThatIsNotThereDenyEverything)
{
    const DeckOnDisk deck(Deck().Slide(Title(u"a")));

    EXPECT_FALSE(SlideOf(*deck.Open(), 1)->NotesPage()->Shapes()->MayHoldText(u"a"));
}

}  // namespace
}  // namespace tessarine::test
