#include <gmock/gmock.h>

#include "BinaryOnDisk.h"
#include "support/BinaryOle.h"

/// All locations over binary presentations: what each finds, what it changes, and that nothing else does.
namespace tessarine::test::ppt
{
namespace
{

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const Text cat(u"a cat");

/// The word in every place that a job can search, and in some that it can't.
BinaryDeck CatsEverywhere()
{
    const HeadersFooters both = HeadersFooters().Header(u"a cat above").Footer(u"a cat below");
    return BinaryDeck()
        .Master(MainMaster(u"Plain", Placeholder(MasterTitle, TitleText, cat))
                    .TitleMaster(Placeholder(MasterCenterTitle, CenterTitleText, cat)))
        .Master(MainMaster(u"Unused", Placeholder(MasterTitle, TitleText, cat)))
        .NotesMaster(Placeholder(MasterNotesBody, NotesText, cat))
        .HandoutMaster(TextBox(cat))
        .NotesFooters(both)
        .Slide(Title(cat), TextBox(Text(cat).Range(2, 5, LinkTo(u"http://cat.example/"))),
               AutoShape(1, cat).Click(LinkToFile(u"C:\\cat.doc")), Group(TextBox(cat)), Table({{cat}}),
               LinkedOle(u"C:\\cat.xlsx", u"Sheet1!R1C1"),
               OleObject(OleKind::Embedded, u"Excel.Sheet.8", OleStorage(MonikerOf(u"cat"))), both, NotesPage(cat))
        .Slide(Title(cat), both)
        .Summary(2, TextValue("title of a cat"))
        .Summary(18, TextValue("cat program"))
        .DocumentSummary(15, TextValue("Other Ltd."))
        .Custom("Client", TextValue("a cat"))
        .Custom("Number", NumberValue(7));
}

struct LocationCase {
    Location location;
    std::int32_t count;
    std::vector<std::string> changed;  ///< Lines of the deck's texts that a replace run changes.
};

void PrintTo(const LocationCase& row, std::ostream* out)
{
    *out << SearchLocations[static_cast<std::size_t>(row.location)].name;
}

class BinaryLocation : public testing::TestWithParam<LocationCase>
{
protected:
    const BinaryOnDisk deck{CatsEverywhere()};
};

TEST_P(BinaryLocation, FindsAndChangesNoByte)
{
    const std::string before = deck.Bytes();

    EXPECT_EQ(deck.Find(GetParam().location, u"cat"), GetParam().count);

    EXPECT_EQ(deck.Bytes(), before);
}

TEST_P(BinaryLocation, ReplacesThatPlaceAlone)
{
    std::vector<std::string> expected = deck.Texts();
    std::size_t changed = 0;
    for (std::string& line : expected) {
        const std::string place = line.substr(0, line.find(": "));
        if (std::ranges::find(GetParam().changed, place) == GetParam().changed.end())
            continue;
        line.replace(line.find("cat", place.size()), 3, "dog");
        ++changed;
    }
    EXPECT_EQ(changed, GetParam().changed.size());

    EXPECT_EQ(deck.Replace(GetParam().location, u"cat", u"dog"), GetParam().count);

    EXPECT_EQ(deck.Texts(), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Locations, BinaryLocation,
    testing::Values(LocationCase{Location::Slides, 2, {"slide 1 shape 1 (14)", "slide 2 shape 1 (14)"}},
                    LocationCase{Location::ShapesAndTextboxes, 2, {"slide 1 shape 2 (17)", "slide 1 shape 3 (1)"}},
                    LocationCase{Location::Header, 0, {}},
                    // The first one is rewritten, and not counted.
                    LocationCase{Location::Footer, 0, {"slide 1 footer"}},
                    // The first shape of the notes page is the image of the slide.
                    LocationCase{Location::Notes, 1, {"notes 1 shape 2 (14)"}},
                    LocationCase{Location::SlideMasterPerSlide, 1, {"master \"Plain\" shape 1 (14)"}},
                    LocationCase{Location::SlideMasterPerPresentation,
                                 2,
                                 {"master \"Plain\" shape 1 (14)", "master \"Unused\" shape 1 (14)"}},
                    LocationCase{Location::TitleMaster, 1, {"title master \"Plain\" shape 1 (14)"}},
                    LocationCase{Location::NotesMaster,
                                 3,
                                 {"notes master shape 1 (14)", "notes master header", "notes master footer"}},
                    LocationCase{Location::HandoutMaster,
                                 3,
                                 {"handout master shape 1 (17)", "notes master header", "notes master footer"}}),
    [](const testing::TestParamInfo<LocationCase>& test) {
        std::string name = SearchLocations[static_cast<std::size_t>(test.param.location)].name;
        std::erase(name, '-');
        return name;
    });

TEST(BinaryLinks, AreRewritten)
{
    const BinaryOnDisk deck(CatsEverywhere());

    EXPECT_EQ(deck.Find(Location::HyperlinkAddresses, u"cat"), 2);
    EXPECT_EQ(deck.Replace(Location::HyperlinkAddresses, u"cat", u"longer dog"), 2);

    EXPECT_THAT(deck.Texts(), AllOf(Contains("slide 1 link: http://longer dog.example/"),
                                    Contains("slide 1 link: C:\\longer dog.doc")));
}

TEST(BinaryProperties, AreRewrittenBuiltInAndCustom)
{
    const BinaryOnDisk deck(CatsEverywhere());

    // The title, and the program's name, which can't be changed and which three dates without a value repeat.
    EXPECT_EQ(deck.Replace(Location::BuiltinProperies, u"cat", u"dog"), 5);
    EXPECT_EQ(deck.Replace(Location::CustomProperties, u"cat", u"dog"), 1);

    const auto presentation = deck.Open();
    const auto builtIn = presentation->BuiltInDocumentProperties();
    EXPECT_EQ(powerpoint::TextOf(PropertyOf(*builtIn, u"Title")->Value()), u"title of a dog");
    EXPECT_EQ(powerpoint::TextOf(PropertyOf(*builtIn, u"Application name")->Value()), u"cat program");
    EXPECT_EQ(powerpoint::TextOf(PropertyOf(*builtIn, u"Company")->Value()), u"Other Ltd.");
    const auto custom = presentation->CustomDocumentProperties();
    EXPECT_EQ(powerpoint::TextOf(PropertyOf(*custom, u"Client")->Value()), u"a dog");
    EXPECT_EQ(std::get<std::int64_t>(PropertyOf(*custom, u"Number")->Value()), std::int64_t{7});
}

TEST(BinaryLinkedObjects, TellTheirSourceWhichCanNotBeChanged)
{
    const BinaryOnDisk deck(CatsEverywhere());
    const std::string before = deck.Bytes();

    EXPECT_EQ(deck.Find(Location::Links, u"cat"), 1);
    EXPECT_EQ(deck.Replace(Location::Links, u"no such text", u""), 0);
    EXPECT_THAT(deck.Texts(), Contains("slide 1 shape 6 (10) source: C:\\cat.xlsx!Sheet1!R1C1").Times(0));
    EXPECT_THAT(deck.Texts(), Contains("slide 1 shape 6 source: C:\\cat.xlsx!Sheet1!R1C1"));
    const auto presentation = deck.Open();
    EXPECT_THAT(RaisedBy([&] { ShapeOf(*presentation, 1, 6)->LinkFormat()->PutSourceFullName(u"C:\\dog.xlsx"); }),
                FailsWith(FailureNumber::Unspecified, "can't be changed"));
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryLocations, OfAnEmptyPresentationAreEmpty)
{
    const BinaryOnDisk deck{BinaryDeck()};

    for (const Location location : {Location::Slides, Location::ShapesAndTextboxes, Location::Notes, Location::Footer,
                                    Location::HyperlinkAddresses, Location::Links})
        EXPECT_EQ(deck.Find(location, u"a"), 0);
}

TEST(BinaryLocations, PassOverAPlaceholderWithoutATextFrame)
{
    const BinaryOnDisk deck(BinaryDeck().Slide(Picture().InPlaceholder(TitleKind, TitleText), Title(cat)));

    EXPECT_THAT(deck.Texts(), Contains("slide 1 shape 1 (14): -"));
    EXPECT_EQ(deck.Find(Location::Slides, u"cat"), 1);
}

TEST(BinaryLocations, NeverEnterGroupsAndTables)
{
    const BinaryOnDisk deck(BinaryDeck().Slide(Group(TextBox(cat)), Table({{cat}})));

    EXPECT_THAT(deck.Texts(), AllOf(Contains("slide 1 shape 1 (6): -"), Contains("slide 1 shape 2 (19): -")));
    for (const Location location : {Location::Slides, Location::ShapesAndTextboxes, Location::Notes})
        EXPECT_EQ(deck.Find(location, u"cat"), 0);
}

TEST(BinaryFooters, EndAtTheFirstThatIsShown)
{
    const HeadersFooters footer = HeadersFooters().Footer(u"a cat");
    const BinaryOnDisk deck(BinaryDeck().Slide(Title(cat)).Slide(footer).Slide(footer));

    EXPECT_EQ(deck.Find(Location::Footer, u"cat"), 0);
    EXPECT_EQ(deck.Replace(Location::Footer, u"cat", u"dog"), 0);

    EXPECT_THAT(deck.Texts(), AllOf(Contains("slide 1 footer: -2147188160"), Contains("slide 2 footer: a dog"),
                                    Contains("slide 3 footer: a cat")));
}

TEST(BinaryFooters, EndAtTheFirstThatIsShownWithoutAnOccurrenceToo)
{
    const BinaryOnDisk deck(BinaryDeck()
                                .Slide(HeadersFooters().Footer(u"a cat that is hidden").FooterNotShown())
                                .Slide(HeadersFooters().Footer(u"a dog"))
                                .Slide(HeadersFooters().Footer(u"a cat")));
    const std::string before = deck.Bytes();

    EXPECT_EQ(deck.Replace(Location::Footer, u"cat", u"lion"), 0);

    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryFooters, HaveNoHeaderBesideThem)
{
    const BinaryOnDisk deck(BinaryDeck().Slide(HeadersFooters().Header(u"a cat").Footer(u"a cat")));
    const auto presentation = deck.Open();
    const auto header = SlideOf(*presentation, 1)->HeadersFooters()->Header();
    constexpr std::int32_t isNotShown = -2147188160;

    EXPECT_EQ(RaisedBy([&] { header->Text(); }).number, isNotShown);
    EXPECT_EQ(RaisedBy([&] { header->PutText(u"a dog"); }).number, isNotShown);
}

TEST(BinaryFooters, ThatNoSlideShowsChangeNothing)
{
    const BinaryOnDisk deck(BinaryDeck().Slide(Title(cat)).Slide(Title(cat)));
    const std::string before = deck.Bytes();

    EXPECT_EQ(deck.Replace(Location::Footer, u"cat", u"dog"), 0);

    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryFooters, OfOneSlideLeaveTheTextOfAllSlidesToTheOthers)
{
    const BinaryOnDisk deck(
        BinaryDeck().SlideFooters(HeadersFooters().Footer(u"a cat")).Slide(Title(cat)).Slide(Title(cat)));

    deck.Replace(Location::Footer, u"cat", u"dog");

    EXPECT_THAT(deck.Texts(), AllOf(Contains("slide 1 footer: a dog"), Contains("slide 2 footer: a cat")));
}

TEST(BinaryFooters, OfAPlaceholderGoBeforeTheContainer)
{
    // Some programs leave the record of placeholders out.
    for (const Shape& shown : {FooterShape(u"a cat in a box"), TextBox(u"a cat in a box").RoundTrip(MasterFooter)}) {
        const BinaryOnDisk deck(BinaryDeck().Slide(shown, HeadersFooters().Footer(u"a cat behind")));

        deck.Replace(Location::Footer, u"cat", u"dog");

        EXPECT_THAT(deck.Texts(), AllOf(Contains("slide 1 footer: a dog in a box"),
                                        Contains("slide 1 shape 1 (14): a dog in a box")));
    }
}

TEST(BinaryFooters, WithoutATextAreShownAndEmpty)
{
    const BinaryOnDisk deck(BinaryDeck().Slide(HeadersFooters().FooterWithoutText()));

    EXPECT_THAT(deck.Texts(), Contains("slide 1 footer: "));
}

TEST(BinaryFooters, OfMastersShowAFieldThatIsNoText)
{
    const BinaryOnDisk deck(BinaryDeck()
                                .NotesMaster(Placeholder(MasterFooter, OtherText, Field(FieldKind::Footer)))
                                .NotesFooters(HeadersFooters().Footer(u"a cat")));

    EXPECT_THAT(deck.Texts(), Contains("notes master footer: a cat"));
}

TEST(BinaryMasters, InUseAreSearchedOnceEach)
{
    const BinaryOnDisk deck(BinaryDeck()
                                .Master(MainMaster(u"A", TextBox(cat)))
                                .Master(MainMaster(u"B", TextBox(cat)))
                                .Master(MainMaster(u"C", TextBox(cat)))
                                .Slide(OnMaster{1})
                                .Slide(OnMaster{1})
                                .Slide(OnMaster{2})
                                .Slide(OnMaster{1}));

    EXPECT_EQ(deck.Find(Location::SlideMasterPerSlide, u"cat"), 2);
    EXPECT_EQ(deck.Find(Location::SlideMasterPerPresentation, u"cat"), 3);
}

TEST(BinaryMasters, WithoutNamesGetNamesThatDiffer)
{
    const MainMaster nameless = MainMaster(u"", TextBox(cat)).Nameless();
    const BinaryOnDisk deck(BinaryDeck().Master(nameless).Master(nameless).Slide(OnMaster{1}).Slide(OnMaster{2}));

    EXPECT_EQ(deck.Find(Location::SlideMasterPerSlide, u"cat"), 2);
    EXPECT_THAT(deck.Texts(),
                AllOf(Contains("slide 1 design: Default Design"), Contains("slide 2 design: 1_Default Design")));
}

TEST(BinaryMasters, OfTitlesAreThoseOfTheirDesign)
{
    const BinaryOnDisk deck(
        BinaryDeck()
            .Master(MainMaster(u"A"))
            .Master(MainMaster(u"B").TitleMaster(Placeholder(MasterCenterTitle, CenterTitleText, cat)))
            .Slide(OnTitleMaster{2}));

    EXPECT_EQ(deck.Find(Location::TitleMaster, u"cat"), 1);
    EXPECT_THAT(deck.Texts(), Contains("slide 1 design: B"));
}

TEST(BinaryMasters, ThatAreLayoutsOfAnotherAreNoDesigns)
{
    const BinaryOnDisk deck(BinaryDeck()
                                .Master(MainMaster(u"A").Original(77))
                                .Master(MainMaster(u"1_A").CopyOf(77).Original(78))
                                .Slide(OnMaster{2}));

    EXPECT_EQ(deck.Open()->Designs()->NewEnum()->Next()->Name(), u"A");
    EXPECT_THAT(deck.Texts(), Contains("slide 1 design: A"));
    EXPECT_THAT(deck.Texts(), Not(Contains(HasSubstr("1_A"))));
}

TEST(BinaryMasters, OfNotesAndHandoutsThatAreMissingHaveNothing)
{
    const BinaryOnDisk deck{BinaryDeck()};

    EXPECT_EQ(deck.Find(Location::NotesMaster, u"a"), 0);
    EXPECT_EQ(deck.Find(Location::HandoutMaster, u"a"), 0);
}

TEST(BinaryMasters, OfNotesAndHandoutsTogetherCountTheTextsOnce)
{
    const BinaryOnDisk deck(CatsEverywhere());

    EXPECT_EQ(deck.Run({Location::NotesMaster, Location::HandoutMaster}, u"cat", u"", true), 3);
    EXPECT_EQ(deck.Run({Location::HandoutMaster, Location::NotesMaster}, u"cat", u"", true), 1);
}

TEST(BinaryShapes, AreOfTheirTypes)
{
    const BinaryOnDisk deck(BinaryDeck().Slide(
        AutoShape(1, cat), TextBox(cat), Title(cat), LinkedOle(u"C:\\a"), EmbeddedOle(), Movie(u"a.avi"), OleControl(),
        Picture(), Line(), Shape(32), Shape(201), WordArt(u"a cat"), Freeform(), TextBox(cat).Deleted()));

    std::vector<std::int32_t> types;
    for (const auto& shape : All(SlideOf(*deck.Open(), 1)->Shapes()))
        types.push_back(shape->Type());
    EXPECT_THAT(types, ElementsAre(1, 17, 14, 10, 7, 16, 12, 13, 9, 9, 12, 15, 5));
}

TEST(BinaryRevision, RisesInItsProperty)
{
    const BinaryOnDisk deck(BinaryDeck().Custom("Revision", NumberValue(3)).Custom("Letter", TextValue("A")));

    deck.Change([](powerpoint::Presentation& presentation) {
        const auto custom = presentation.CustomDocumentProperties();
        PropertyOf(*custom, u"Revision")->PutValue(4.0);
        PropertyOf(*custom, u"Letter")->PutValue(String(u"A"));
    });

    const auto custom = deck.Open()->CustomDocumentProperties();
    EXPECT_EQ(std::get<std::int64_t>(PropertyOf(*custom, u"Revision")->Value()), std::int64_t{4});
    EXPECT_EQ(std::get<String>(PropertyOf(*custom, u"Letter")->Value()), u"A");
}

TEST(BinaryRevision, OfAFractionIsADouble)
{
    const BinaryOnDisk deck(BinaryDeck().Custom("Revision", NumberValue(1)));

    deck.Change([](powerpoint::Presentation& presentation) {
        PropertyOf(*presentation.CustomDocumentProperties(), u"Revision")->PutValue(1.5);
    });

    EXPECT_EQ(std::get<double>(PropertyOf(*deck.Open()->CustomDocumentProperties(), u"Revision")->Value()), 1.5);
}

}  // namespace
}  // namespace tessarine::test::ppt
