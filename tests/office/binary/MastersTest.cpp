#include <gmock/gmock.h>

#include "BinaryOnDisk.h"

/// Masters of binary presentations: which of them a location replaces in, and header and footer of the notes master.
namespace tessarine::test::ppt
{
namespace
{

using testing::AllOf;
using testing::Contains;
using testing::IsSupersetOf;

const std::vector<Location> perSlide{Location::SlideMasterPerSlide};
const std::vector<Location> perPresentation{Location::SlideMasterPerPresentation};

/// A master with a text box, and a title master with another.
MainMaster Design(const String& name)
{
    return MainMaster(name, TextBox(u"a cat")).TitleMaster(TextBox(u"a title cat"));
}

/// Three slides on one design, one on another, none on a third.
BinaryDeck OfThreeDesigns()
{
    return BinaryDeck()
        .Master(Design(u"C"))
        .Master(Design(u"A"))
        .Master(Design(u"B"))
        .Slide(OnMaster{2})
        .Slide(OnTitleMaster{2})
        .Slide(OnMaster{3})
        .Slide(OnMaster{2});
}

HeadersFooters HeaderAndFooter()
{
    return HeadersFooters().Header(u"a cat above").Footer(u"a cat below");
}

/// A presentation whose notes master is there, with these texts.
BinaryDeck WithNotesTexts(const HeadersFooters& texts)
{
    return BinaryDeck().NotesMaster(TextBox(u"notes")).HandoutMaster(TextBox(u"handout")).NotesFooters(texts);
}

TEST(BinarySlideMasters, OfSlidesAreReplacedInOnceEach)
{
    const BinaryOnDisk deck(OfThreeDesigns());

    // What begins with the text that is sought would tell of a second search.
    EXPECT_EQ(deck.Replace(perSlide[0], u"cat", u"cats"), 2);

    EXPECT_THAT(deck.Texts(),
                IsSupersetOf({"master \"A\" shape 1 (17): a cats", "master \"B\" shape 1 (17): a cats",
                              "master \"C\" shape 1 (17): a cat", "title master \"A\" shape 1 (17): a title cat"}));
}

TEST(BinarySlideMasters, OfThePresentationAreReplacedInWithoutASlide)
{
    const BinaryOnDisk deck(OfThreeDesigns());

    EXPECT_EQ(deck.Replace(perPresentation[0], u"cat", u"cats"), 3);

    EXPECT_THAT(deck.Texts(),
                IsSupersetOf({"master \"A\" shape 1 (17): a cats", "master \"B\" shape 1 (17): a cats",
                              "master \"C\" shape 1 (17): a cats", "title master \"C\" shape 1 (17): a title cat"}));
}

TEST(BinarySlideMasters, ThatBothLocationsReachAreSearchedTwice)
{
    const BinaryOnDisk deck(OfThreeDesigns());
    const std::vector<Location> both{perSlide[0], perPresentation[0]};

    const BinaryOutcome found = deck.Process({{u"cat", u"", both}}, {.isFindOnly = true});
    const BinaryOutcome replaced = deck.Process({{u"cat", u"dog", both}});

    EXPECT_EQ(found.Count(both[0]), 2);
    EXPECT_EQ(found.Count(both[1]), 3);
    EXPECT_EQ(replaced.Count(both[0]), 2);
    EXPECT_EQ(replaced.Count(both[1]), 1);
}

TEST(BinarySlideMasters, OfDesignsWithOneNameAreOneToTheSlides)
{
    const BinaryOnDisk deck(
        BinaryDeck().Master(Design(u"A")).Master(Design(u"A")).Slide(OnMaster{2}).Slide(OnMaster{1}));

    EXPECT_EQ(deck.Replace(perSlide[0], u"cat", u"dog"), 1);
    EXPECT_EQ(deck.Replace(perPresentation[0], u"cat", u"lion"), 1);

    EXPECT_THAT(deck.Texts(), IsSupersetOf({"master \"A\" shape 1 (17): a lion", "master \"A\" shape 1 (17): a dog"}));
}

TEST(BinarySlideMasters, WithAnEmptyNameHaveOneThatTheSlidesFind)
{
    const BinaryOnDisk deck(BinaryDeck().Master(Design(u"")).Slide(OnMaster{1}));

    EXPECT_EQ(deck.Replace(perSlide[0], u"cat", u"dog"), 1);

    EXPECT_THAT(deck.Texts(), AllOf(Contains("slide 1 design: Default Design"),
                                    Contains("master \"Default Design\" shape 1 (17): a dog")));
}

TEST(BinarySlideMasters, OfNoSlideAreThoseOfThePresentationAlone)
{
    const BinaryOnDisk deck(BinaryDeck().Master(Design(u"A")).Master(Design(u"B")));

    EXPECT_EQ(deck.Replace(perSlide[0], u"cat", u"dog"), 0);
    EXPECT_EQ(deck.Replace(perPresentation[0], u"cat", u"dog"), 2);

    EXPECT_THAT(deck.Texts(), IsSupersetOf({"master \"A\" shape 1 (17): a dog", "master \"B\" shape 1 (17): a dog"}));
}

TEST(BinaryTitleMasters, AreReplacedInWhereADesignHasOne)
{
    const BinaryOnDisk deck(
        BinaryDeck().Master(MainMaster(u"A", TextBox(u"a cat"))).Master(Design(u"B")).Slide(OnMaster{1}));

    EXPECT_EQ(deck.Replace(Location::TitleMaster, u"cat", u"dog"), 1);

    EXPECT_THAT(deck.Texts(), IsSupersetOf({"master \"A\" shape 1 (17): a cat", "master \"B\" shape 1 (17): a cat",
                                            "title master \"B\" shape 1 (17): a title dog"}));
}

TEST(BinaryMasterPages, KeepTheirGroupsAndTables)
{
    const Text text(u"a cat");
    const BinaryOnDisk deck(
        BinaryDeck()
            .Master(MainMaster(u"A", Group(TextBox(text)), Table({{text}})).TitleMaster(Group(TextBox(text))))
            .NotesMaster(Group(TextBox(text)))
            .HandoutMaster(Table({{text}}))
            .Slide(Group(TextBox(text), Group(TextBox(text))), NotesPage(Group(TextBox(text)))));
    const std::string before = deck.Bytes();
    const std::vector<Location> all{Location::Slides,      Location::ShapesAndTextboxes, Location::Notes,
                                    perSlide[0],           perPresentation[0],           Location::TitleMaster,
                                    Location::NotesMaster, Location::HandoutMaster};

    const BinaryOutcome outcome = deck.Process({{u"cat", u"dog", all}});

    for (const Location location : all)
        EXPECT_EQ(outcome.Count(location), 0);
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryHeaderAndFooter, CountUnderTheHandoutMasterWhereThatIsChosenAlone)
{
    const BinaryOnDisk deck(WithNotesTexts(HeaderAndFooter()));

    const BinaryOutcome outcome = deck.Process({{u"cat", u"dog", {Location::HandoutMaster}}});

    EXPECT_EQ(outcome.Count(Location::HandoutMaster), 2);
    EXPECT_EQ(outcome.Count(Location::NotesMaster), -1);
    EXPECT_THAT(deck.Texts(), IsSupersetOf({"notes master header: a dog above", "notes master footer: a dog below"}));
}

TEST(BinaryHeaderAndFooter, AreReachedWithoutAHandoutMaster)
{
    const BinaryOnDisk deck(BinaryDeck().NotesMaster(TextBox(u"a cat")).NotesFooters(HeaderAndFooter()));

    EXPECT_EQ(deck.Replace(Location::HandoutMaster, u"cat", u"dog"), 2);

    EXPECT_THAT(deck.Texts(), IsSupersetOf({"notes master shape 1 (17): a cat", "notes master header: a dog above",
                                            "notes master footer: a dog below"}));
}

TEST(BinaryHeaderAndFooter, AreReplacedOnceWhereNotesAndHandoutMasterAreChosen)
{
    const BinaryOnDisk deck(WithNotesTexts(HeaderAndFooter()));

    const BinaryOutcome outcome = deck.Process({{u"cat", u"cats", {Location::NotesMaster, Location::HandoutMaster}}});

    EXPECT_EQ(outcome.Count(Location::NotesMaster), 2);
    EXPECT_EQ(outcome.Count(Location::HandoutMaster), 0);
    EXPECT_THAT(deck.Texts(), IsSupersetOf({"notes master header: a cats above", "notes master footer: a cats below"}));
}

TEST(BinaryHeaderAndFooter, OfTheHandoutMasterItselfAreNeverRead)
{
    const BinaryOnDisk deck(BinaryDeck()
                                .NotesMaster(TextBox(u"notes"))
                                .HandoutMaster(Placeholder(MasterHeader, OtherText, u"a heading cat"))
                                .NotesFooters(HeadersFooters().Header(u"plain").Footer(u"plain")));

    // As a shape, and not once more as a header.
    EXPECT_EQ(deck.Replace(Location::HandoutMaster, u"cat", u"dog"), 1);

    EXPECT_THAT(deck.Texts(),
                IsSupersetOf({"handout master shape 1 (14): a heading dog", "notes master header: plain"}));
}

TEST(BinaryHeaderAndFooter, ThatHoldNoOccurrenceComeBackAsTheyWere)
{
    const BinaryOnDisk deck(WithNotesTexts(HeadersFooters().Header(u"a\vheader \u732B").Footer(u"a footer")));
    const std::string before = deck.Bytes();

    EXPECT_EQ(deck.Replace(Location::NotesMaster, u"cat", u"dog"), 0);
    EXPECT_EQ(deck.Replace(Location::HandoutMaster, u"cat", u"dog"), 0);

    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryHeaderAndFooter, AreChangedOneByOne)
{
    const BinaryOnDisk deck(WithNotesTexts(HeadersFooters().Header(u"a dog").Footer(u"a cat")));

    EXPECT_EQ(deck.Replace(Location::NotesMaster, u"cat", u"\u732B"), 1);

    EXPECT_THAT(deck.Texts(), IsSupersetOf({"notes master header: a dog", "notes master footer: a \xE7\x8C\xAB"}));
}

TEST(BinaryHeaderAndFooter, ThatAreNotShownAreEmptyAndStay)
{
    const BinaryOnDisk deck(WithNotesTexts(HeaderAndFooter().FooterNotShown()));

    EXPECT_EQ(deck.Replace(Location::NotesMaster, u"cat", u"dog"), 1);

    EXPECT_THAT(deck.Texts(), IsSupersetOf({"notes master header: a dog above", "notes master footer: "}));
    std::string stream = deck.Stream("PowerPoint Document");
    std::erase(stream, '\0');
    EXPECT_THAT(stream, testing::HasSubstr("a cat below"));
}

}  // namespace
}  // namespace tessarine::test::ppt
