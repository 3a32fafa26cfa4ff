#include "DeckOnDisk.h"
#include "support/Fixtures.h"

namespace tessarine::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::int32_t> TypesOf(const std::shared_ptr<powerpoint::Shapes>& shapes)
{
    std::vector<std::int32_t> types;
    for (const auto& shape : All(shapes))
        types.push_back(shape->Type());
    return types;
}

/// Replaces in the first shape that holds the text.
void ReplaceOn(const std::shared_ptr<powerpoint::Shapes>& shapes, const String& find, const String& with)
{
    for (const auto& shape : All(shapes))
        if (shape->HasTextFrame() != 0 && shape->TextFrame()->TextRange()->Replace(find, with, 0, 1, 0))
            return;
    ADD_FAILURE() << "no shape holds the text";
}

std::vector<String> NamesOf(const std::vector<std::shared_ptr<powerpoint::Design>>& designs)
{
    std::vector<String> names;
    for (const auto& design : designs)
        names.push_back(design->Name());
    return names;
}

TEST(NotesPages, HoldTheirShapesWithTheirTypes)
{
    const DeckOnDisk deck(Deck().Slide(
        Title(u"a"), NotesPage(SlideImage(), Body(u"notes"), Header(u"head"), TextBox(u"box"), SlideNumber(u"1"))));
    const auto presentation = deck.Open();

    const auto shapes = All(SlideOf(*presentation, 1)->NotesPage()->Shapes());

    EXPECT_THAT(TypesOf(SlideOf(*presentation, 1)->NotesPage()->Shapes()), ElementsAre(14, 14, 14, 17, 14));
    EXPECT_EQ(shapes[0]->HasTextFrame(), 0) << "the picture of the slide";
    EXPECT_EQ(shapes[1]->HasTextFrame(), -1);
    EXPECT_NE(shapes[2]->TextFrame()->TextRange()->Find(u"head", 0, 1, 0), nullptr);
}

TEST(NotesPages, OfSlidesWithoutOneAreEmptyAndAddNothing)
{
    const DeckOnDisk deck(Deck().Slide(Title(u"a")));
    const std::string before = deck.Bytes();

    deck.Change([](powerpoint::Presentation& presentation) {
        ASSERT_NE(SlideOf(presentation, 1)->NotesPage(), nullptr);
        EXPECT_THAT(All(SlideOf(presentation, 1)->NotesPage()->Shapes()), IsEmpty());
    });

    EXPECT_EQ(deck.Bytes(), before);
}

TEST(NotesPages, AreEditedInTheirOwnPart)
{
    const Deck before = Deck()
                            .Slide(Title(u"Fabrikam"), NotesPage(u"about Fabrikam"))
                            .Slide(Title(u"Fabrikam"), NotesPage(u"more on Fabrikam"));
    const DeckOnDisk deck(before);

    deck.Change([](powerpoint::Presentation& presentation) {
        ReplaceOn(SlideOf(presentation, 2)->NotesPage()->Shapes(), u"Fabrikam", u"x");
    });

    EXPECT_THAT(EntriesThatDiffer(before, deck.Package()), ElementsAre("ppt/notesSlides/notesSlide2.xml"));
    EXPECT_THAT(NotesOf(deck.Package(), 2), testing::Contains(u"more on x"));
}

TEST(NotesPages, OfTwoSlidesMayBeOnePart)
{
    const DeckOnDisk deck(Deck()
                              .Slide(Title(u"a"), NotesPage(u"Fabrikam"))
                              .Slide(Title(u"b"), Related{"rId77", "notesSlide", u"../notesSlides/notesSlide1.xml"}));

    deck.Change([](powerpoint::Presentation& presentation) {
        ReplaceOn(SlideOf(presentation, 1)->NotesPage()->Shapes(), u"Fabrikam", u"one");
        ReplaceOn(SlideOf(presentation, 2)->NotesPage()->Shapes(), u"one", u"two");
    });

    EXPECT_THAT(NotesOf(deck.Package(), 1), testing::Contains(u"two"));
}

TEST(NotesPages, MayHaveTheirTypeFromTheirExtension)
{
    const DeckOnDisk deck(
        Deck()
            .Slide(Title(u"a"), NotesPage(u"Fabrikam"))
            .Edit("[Content_Types].xml", "Override PartName=\"/ppt/notesSlides/notesSlide1.xml\"",
                  "Default Extension=\"notes\"")
            .Edit("ppt/slides/_rels/slide1.xml.rels", "notesSlide1.xml", "notesSlide1.notes")
            .Rename("ppt/notesSlides/notesSlide1.xml", "ppt/notesSlides/notesSlide1.notes")
            .Rename("ppt/notesSlides/_rels/notesSlide1.xml.rels", "ppt/notesSlides/_rels/notesSlide1.notes.rels"));
    const auto presentation = deck.Open();

    const auto shapes = All(SlideOf(*presentation, 1)->NotesPage()->Shapes());

    EXPECT_NE(shapes.back()->TextFrame()->TextRange()->Find(u"Fabrikam", 0, 1, 0), nullptr);
    EXPECT_TRUE(presentation->NotesMayHoldText(u"Fabrikam"));
}

TEST(Designs, AreOnePerMasterInTheOrderOfTheList)
{
    const DeckOnDisk deck(fixtures::Masters());

    EXPECT_THAT(NamesOf(All(deck.Open()->Designs())), ElementsAre(u"Office Theme", u"Office Theme", u""));
}

TEST(Designs, GoByTheListNotByThePartsNames)
{
    const std::string main = "ppt/presentation.xml";
    const std::string xml = fixtures::Masters().EntryBytes(main);
    const std::size_t begin = xml.find("<p:sldMasterId ");
    const std::size_t second = xml.find("<p:sldMasterId ", begin + 1);
    const std::size_t third = xml.find("<p:sldMasterId ", second + 1);
    const std::string first = xml.substr(begin, second - begin);
    const DeckOnDisk deck(
        fixtures::Masters()
            .Edit(main, first, "")
            .Edit(main, xml.substr(second, third - second), xml.substr(second, third - second) + first)
            .Edit("ppt/theme/theme1.xml", "name=\"Office Theme\"", "name=\"One &amp; only\""));

    EXPECT_THAT(NamesOf(All(deck.Open()->Designs())), ElementsAre(u"Office Theme", u"One & only", u""));
}

TEST(Designs, OfAMasterWithoutThemeHaveNoName)
{
    const DeckOnDisk deck(Deck().Master(SlideMaster(u"Theme").WithoutTheme()));

    EXPECT_THAT(NamesOf(All(deck.Open()->Designs())), ElementsAre(u""));
}

TEST(DesignOfASlide, IsThatOfItsLayoutsMaster)
{
    const DeckOnDisk deck(Deck()
                              .Master(SlideMaster(u"One", TextBox(u"first")))
                              .Master(SlideMaster(u"Two", TextBox(u"second")))
                              .Slide(Title(u"a"), OnLayout{.master = 2})
                              .Slide(Title(u"b"), OnLayout{.master = 1}));
    const auto presentation = deck.Open();

    EXPECT_EQ(SlideOf(*presentation, 1)->Design()->Name(), u"Two");
    EXPECT_EQ(SlideOf(*presentation, 2)->Design()->Name(), u"One");
}

TEST(DesignOfASlide, IsTheFirstWhereTheFileDoesNotSay)
{
    const std::string links = "ppt/slides/_rels/slide1.xml.rels";
    const Deck base =
        Deck().Master(SlideMaster(u"One")).Master(SlideMaster(u"Two")).Slide(Title(u"a"), OnLayout{.master = 2});
    const DeckOnDisk deck(Deck(base).Edit(links, "relationships/slideLayout\"", "relationships/other\""));

    EXPECT_EQ(SlideOf(*deck.Open(), 1)->Design()->Name(), u"One");
}

TEST(SlideMasters, AreEditedInTheirOwnPart)
{
    const Deck before = fixtures::Masters();
    const DeckOnDisk deck(before);

    deck.Change([](powerpoint::Presentation& presentation) {
        ReplaceOn(All(presentation.Designs()).at(1)->SlideMaster()->Shapes(), u"Fabrikam", u"x");
    });

    EXPECT_THAT(EntriesThatDiffer(before, deck.Package()), ElementsAre("ppt/slideMasters/slideMaster2.xml"));
}

TEST(SlideMasters, HoldTheirPromptsAsText)
{
    const DeckOnDisk deck(Deck().Master(SlideMaster(u"Theme", Title(u"Click to edit Master title style"))));

    const auto shapes = All(All(deck.Open()->Designs()).at(0)->SlideMaster()->Shapes());

    EXPECT_EQ(shapes.at(0)->TextFrame()->TextRange()->Find(u"Master title", 0, 1, 0)->Start(), 15);
}

Deck WithLayouts(const std::vector<std::string>& types)
{
    SlideMaster master(u"Theme");
    int number = 0;
    for (const std::string& type : types)
        master.Add(Layout(type, TextBox(u"Fabrikam " + FromUtf8(std::to_string(++number)))));
    return Deck().Master(master);
}

TEST(TitleMasters, AreTheFirstLayoutOfTypeTitle)
{
    const Deck before = WithLayouts({"obj", "title", "title"});
    const DeckOnDisk deck(before);

    deck.Change([](powerpoint::Presentation& presentation) {
        const auto design = All(presentation.Designs()).at(0);
        EXPECT_EQ(design->HasTitleMaster(), -1);
        ReplaceOn(design->TitleMaster()->Shapes(), u"Fabrikam", u"x");
    });

    EXPECT_THAT(EntriesThatDiffer(before, deck.Package()), ElementsAre("ppt/slideLayouts/slideLayout2.xml"));
}

TEST(TitleMasters, AreNoneWithoutSuchALayout)
{
    for (const Deck& without : {WithLayouts({"obj", "blank"}), WithLayouts({"", "titleOnly"}), Deck()}) {
        const DeckOnDisk deck(without);
        const auto presentation = deck.Open();
        const auto design = All(presentation->Designs()).at(0);

        EXPECT_EQ(design->HasTitleMaster(), 0);
        EXPECT_THAT(RaisedBy([&] { design->TitleMaster(); }), FailsWith(FailureNumber::InvalidRequest, "title master"));
    }
}

TEST(TitleMasters, HaveAFooterAndNoHeader)
{
    const DeckOnDisk deck(
        Deck().Master(SlideMaster(u"Theme", Layout("title", CenteredTitle(u"a"), Header(u"h"), Footer(u"f")))));
    const auto presentation = deck.Open();
    const auto texts = All(presentation->Designs()).at(0)->TitleMaster()->HeadersFooters();

    EXPECT_EQ(texts->Footer()->Text(), u"f");
    EXPECT_EQ(RaisedBy([&] { texts->Header()->Text(); }).number, FailureNumber::InvalidRequest);
}

TEST(TitleMasters, AndWalksOfTheSameDesignSeeTheSameEdits)
{
    const DeckOnDisk deck(WithLayouts({"title"}));

    deck.Change([](powerpoint::Presentation& presentation) {
        const auto design = All(presentation.Designs()).at(0);
        ReplaceOn(design->TitleMaster()->Shapes(), u"Fabrikam", u"one");
        ReplaceOn(design->TitleMaster()->Shapes(), u"one", u"two");
    });

    EXPECT_THAT(TextsOfPart(deck.Package(), "ppt/slideLayouts/slideLayout1.xml"), ElementsAre(u"two 1"));
}

}  // namespace
}  // namespace tessarine::test
