#include "DeckOnDisk.h"

namespace tessarine::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

const std::string office2010 = "http://schemas.microsoft.com/office/powerpoint/2010/main";

/// Which of the shapes of a slide hold a text.
std::vector<int> ShapesWith(powerpoint::Presentation& presentation, const String& text, std::size_t slide = 1)
{
    std::vector<int> hits;
    int number = 0;
    for (const auto& shape : All(SlideOf(presentation, slide)->Shapes())) {
        ++number;
        if (shape->HasTextFrame() != 0 && shape->TextFrame()->TextRange()->Find(text, 0, 0, 0))
            hits.push_back(number);
    }
    return hits;
}

std::vector<std::int32_t> TypesOn(powerpoint::Presentation& presentation)
{
    std::vector<std::int32_t> types;
    for (const auto& shape : All(SlideOf(presentation, 1)->Shapes()))
        types.push_back(shape->Type());
    return types;
}

TEST(Shapes, StandInDocumentOrder)
{
    const DeckOnDisk deck(Deck().Slide(Picture(), TextBox(u"a"), Freeform(u"b"), Title(u"c")));

    EXPECT_THAT(TypesOn(*deck.Open()), ElementsAre(powerpoint::msoPicture, powerpoint::msoTextBox,
                                                   powerpoint::msoFreeform, powerpoint::msoPlaceholder));
}

TEST(Shapes, HaveTheNamesThatTheUserGaveThem)
{
    const DeckOnDisk deck(Deck()
                              .Slide(TextBox(u"a").Named(u"Owner & \u0434"), Group(TextBox(u"b")).Named(u"Pair"),
                                     TextBox(u"c").Named({}), Picture().Named(u"Logo"))
                              .Edit(slide1, " name=\" 4\"", ""));
    const auto presentation = deck.Open();

    const auto names = [&] {
        std::vector<String> all;
        for (const auto& shape : All(SlideOf(*presentation, 1)->Shapes()))
            all.push_back(shape->Name());
        return all;
    };
    EXPECT_THAT(names(), ElementsAre(u"Owner & \u0434 1", u"Pair 2", u"", u"Logo 5"));
    ReplaceInShape(*presentation, 1, 1, u"a", u"a long text");
    presentation->Save();
    EXPECT_THAT(names(), ElementsAre(u"Owner & \u0434 1", u"Pair 2", u"", u"Logo 5"));
}

TEST(Shapes, LeaveOutMembersOfGroups)
{
    const DeckOnDisk deck(Deck().Slide(Group(TextBox(u"in"), Group(TextBox(u"deep"))), TextBox(u"out")));
    const auto presentation = deck.Open();

    EXPECT_THAT(TypesOn(*presentation), ElementsAre(powerpoint::msoGroup, powerpoint::msoTextBox));
    EXPECT_THAT(ShapesWith(*presentation, u"in"), IsEmpty());
}

TEST(Shapes, LeaveOutTextInTablesChartsAndDiagrams)
{
    const DeckOnDisk deck(Deck().Slide(Table({{Paragraph(u"Fabrikam")}}), Chart(), Diagram(u"Fabrikam")));

    EXPECT_THAT(ShapesWith(*deck.Open(), u"Fabrikam"), IsEmpty());
}

TEST(Shapes, HoldHiddenOnesAndThoseOfHiddenSlides)
{
    const DeckOnDisk deck(Deck().Slide(HiddenSlide(), TextBox(u"a").Hidden()));

    EXPECT_THAT(ShapesWith(*deck.Open(), u"a"), ElementsAre(1));
}

TEST(Shapes, LeaveOutThoseOfLayoutAndMaster)
{
    const DeckOnDisk deck(Deck()
                              .Master(SlideMaster(u"Theme", Title(u"Prompt"), Footer(u"Foot"),
                                                  Layout("obj", Title(u"Prompt"), TextBox(u"Prompt"))))
                              .Slide(Title(u"")));
    const auto presentation = deck.Open();

    EXPECT_THAT(TypesOn(*presentation), ElementsAre(powerpoint::msoPlaceholder));
    EXPECT_THAT(ShapesWith(*presentation, u"Prompt"), IsEmpty());
}

TEST(Shapes, LeaveOutExtensionsAndCommentsInTheTree)
{
    const DeckOnDisk deck(Deck().Slide(RawShape("<!-- <p:sp/> -->"), TextBox(u"a"),
                                       RawShape("<p:extLst><p:ext uri=\"{1}\"><p:sp/></p:ext></p:extLst>")));

    EXPECT_THAT(TypesOn(*deck.Open()), ElementsAre(powerpoint::msoTextBox));
}

TEST(Shapes, OfASlideWithoutAnyAreNone)
{
    const DeckOnDisk deck(Deck().Slide());

    EXPECT_THAT(TypesOn(*deck.Open()), IsEmpty());
}

TEST(Shapes, KeepTheirPlacesWhileTextIsEdited)
{
    const DeckOnDisk deck(Deck().Slide(TextBox(u"one"), TextBox(u"two")));
    const auto presentation = deck.Open();
    const auto second = ShapeOf(*presentation, 1, 2)->TextFrame()->TextRange();

    ReplaceInShape(*presentation, 1, 1, u"one", u"a\nmuch\nlonger\ntext");
    second->Replace(u"two", u"three", 0, 1, 0);
    presentation->Save();

    EXPECT_THAT(TextsOf(deck.Package(), 1), ElementsAre(u"a\rmuch\rlonger\rtext", u"three"));
}

struct Requirement {
    const char* name;
    const char* uri;
    bool understood;
};

void PrintTo(const Requirement& requirement, std::ostream* out)
{
    *out << requirement.name;
}

class AlternateContent : public testing::TestWithParam<Requirement>
{
};

TEST_P(AlternateContent, GivesTheChoiceWhoseNamespacesAreUnderstood)
{
    const DeckOnDisk deck(
        Deck().Slide(Alternate("x", GetParam().uri, TextBox(u"new"), Freeform(u"old")), TextBox(u"behind")));
    const auto presentation = deck.Open();

    EXPECT_THAT(ShapesWith(*presentation, GetParam().understood ? u"new" : u"old"), ElementsAre(1));
    EXPECT_THAT(ShapesWith(*presentation, GetParam().understood ? u"old" : u"new"), IsEmpty());
    EXPECT_THAT(ShapesWith(*presentation, u"behind"), ElementsAre(2));
}

INSTANTIATE_TEST_SUITE_P(
    Namespaces, AlternateContent,
    testing::Values(Requirement{"PowerPoint2010", "http://schemas.microsoft.com/office/powerpoint/2010/main", true},
                    Requirement{"PowerPoint2012", "http://schemas.microsoft.com/office/powerpoint/2012/main", true},
                    Requirement{"Drawing2010", "http://schemas.microsoft.com/office/drawing/2010/main", true},
                    Requirement{"Drawing2016", "http://schemas.microsoft.com/office/drawing/2016/ink", true},
                    Requirement{"Chartex", "http://schemas.microsoft.com/office/drawing/2014/chartex", true},
                    Requirement{"Vml", "urn:schemas-microsoft-com:vml", true},
                    Requirement{"Unknown", "http://example.com/never", false}),
    [](const auto& tested) { return std::string(tested.param.name); });

/// The markup of one alternate content with branches given as XML.
Shape AlternateOf(const std::string& branches)
{
    return RawShape(
        "<mc:AlternateContent xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\" "
        "xmlns:p14=\"" +
        office2010 + "\" xmlns:n=\"http://example.com/never\">" + branches + "</mc:AlternateContent>");
}

std::string ShapeXml(const std::string& text)
{
    return "<p:sp><p:nvSpPr><p:cNvPr id=\"9\" name=\"x\"/><p:cNvSpPr/><p:nvPr/></p:nvSpPr><p:spPr/>"
           "<p:txBody><a:bodyPr/><a:p><a:r><a:t>" +
           text + "</a:t></a:r></a:p></p:txBody></p:sp>";
}

TEST(AlternateContents, NeedAllNamespacesOfAChoice)
{
    const DeckOnDisk deck(Deck().Slide(AlternateOf(
        "<mc:Choice Requires=\"p14 n\">" + ShapeXml("one") + "</mc:Choice>" + "<mc:Choice Requires=\" p14  p14 \">" +
        ShapeXml("two") + "</mc:Choice>" + "<mc:Choice Requires=\"p14\">" + ShapeXml("three") + "</mc:Choice>" +
        "<mc:Fallback>" + ShapeXml("four") + "</mc:Fallback>")));

    EXPECT_THAT(ShapesWith(*deck.Open(), u"two"), ElementsAre(1));
}

TEST(AlternateContents, WithoutABranchThatAppliesAreNoShape)
{
    const DeckOnDisk deck(
        Deck().Slide(AlternateOf("<mc:Choice Requires=\"n\">" + ShapeXml("one") + "</mc:Choice>"), TextBox(u"two")));
    const auto presentation = deck.Open();

    EXPECT_THAT(ShapesWith(*presentation, u"one"), IsEmpty());
    EXPECT_THAT(ShapesWith(*presentation, u"two"), ElementsAre(1));
}

TEST(AlternateContents, MayBeNested)
{
    const std::string inner = "<mc:AlternateContent><mc:Choice Requires=\"n\">" + ShapeXml("one") +
                              "</mc:Choice><mc:Fallback>" + ShapeXml("two") + "</mc:Fallback></mc:AlternateContent>";
    const DeckOnDisk deck(Deck().Slide(AlternateOf(
        "<mc:Choice Requires=\"p14\">" + inner + "</mc:Choice><mc:Fallback>" + ShapeXml("three") + "</mc:Fallback>")));

    EXPECT_THAT(ShapesWith(*deck.Open(), u"two"), ElementsAre(1));
}

TEST(AlternateContents, WithTheSameTextInBothBranchesAreEditedAlike)
{
    const Deck before = Deck().Slide(Alternate("p14", office2010, TextBox(u"see Fabrikam"), Freeform(u"see Fabrikam")));
    const DeckOnDisk deck(before);

    deck.Change([](powerpoint::Presentation& presentation) {
        ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso");
        ReplaceInShape(presentation, 1, 1, u"see", u"read\nof");
    });

    EXPECT_EQ(deck.Package().Entry(slide1).bytes,
              Deck(before)
                  .Edit(slide1, "<a:t>see Fabrikam</a:t></a:r></a:p>",
                        "<a:t>read</a:t></a:r></a:p><a:p><a:r><a:t>of</a:t></a:r><a:r><a:t> Contoso</a:t></a:r></a:p>")
                  .EntryBytes(slide1));
}

TEST(AlternateContents, WithOtherTextInTheFallbackKeepIt)
{
    const Deck before = Deck().Slide(Alternate("p14", office2010, TextBox(u"Fabrikam"), TextBox(u"Fabrikam Ltd")));
    const DeckOnDisk deck(before);

    deck.Change([](powerpoint::Presentation& presentation) {
        ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Fabrikam Ltd");
        ReplaceInShape(presentation, 1, 1, u"Fabrikam Ltd", u"x");
    });

    EXPECT_EQ(deck.Package().Entry(slide1).bytes,
              Deck(before).Edit(slide1, "<a:t>Fabrikam</a:t>", "<a:t>x</a:t>").EntryBytes(slide1));
}

TEST(AlternateContents, WhoseFallbackAppliesKeepTheChoice)
{
    const Deck before =
        Deck().Slide(Alternate("n", "http://example.com/never", TextBox(u"Fabrikam"), Freeform(u"Fabrikam")));
    const DeckOnDisk deck(before);

    deck.Change([](powerpoint::Presentation& presentation) {
        EXPECT_EQ(ShapeOf(presentation, 1, 1)->Type(), powerpoint::msoFreeform);
        ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"x");
    });

    EXPECT_EQ(deck.Package().Entry(slide1).bytes,
              Deck(before)
                  .Edit(slide1, "<a:t>Fabrikam</a:t></a:r></a:p></p:txBody></p:sp></mc:Fallback>",
                        "<a:t>x</a:t></a:r></a:p></p:txBody></p:sp></mc:Fallback>")
                  .EntryBytes(slide1));
}

}  // namespace
}  // namespace tessarine::test
