#include <gmock/gmock.h>

#include <algorithm>

#include "BinaryOnDisk.h"
#include "files/CompoundFile.h"
#include "office/builtin/compound/CompoundFile.h"
#include "support/BinaryReader.h"
#include "support/BinaryRecords.h"
#include "support/CompoundReader.h"

/// What a save of a binary presentation writes: one edit, nothing of what was replaced, and all else as it was.
namespace tessarine::test::ppt
{
namespace
{

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

/// Two slides with an animal; records at the end of the second one.
BinaryDeck WithAnimals(const String& animal, const std::string& further = {})
{
    return BinaryDeck()
        .Slide(Title(u"a " + animal), TextBox(u"another " + animal))
        .Slide(Title(u"the last " + animal), SlideRecords{further});
}

BinaryDeck WithCats()
{
    return WithAnimals(u"cat");
}

/// The same with another first slide.
BinaryDeck WithFirstSlide(const String& title, const String& text)
{
    return BinaryDeck().Slide(Title(title), TextBox(text)).Slide(Title(u"the last cat"));
}

/// The same with another title of the second slide.
BinaryDeck WithLastTitle(const String& title)
{
    return BinaryDeck().Slide(Title(u"a cat"), TextBox(u"another cat")).Slide(Title(title));
}

const std::string documentSummaryName =
    "\x05"
    "DocumentSummaryInformation";

/// How many records of a type the stream holds side by side.
std::ptrdiff_t CountIn(const std::string& stream, std::uint32_t type)
{
    return std::ranges::count(RecordsOf(stream), type, &BinaryRecord::type);
}

const std::vector<Location> allTexts{Location::Slides, Location::ShapesAndTextboxes};

std::int32_t ReplaceCats(const BinaryOnDisk& deck)
{
    return deck.Run(allTexts, u"cat", u"dog", false);
}

/// A text as it may stand in the file: in bytes, and in characters.
void ExpectGone(const std::string& bytes, const std::string& text)
{
    EXPECT_THAT(bytes, AllOf(Not(HasSubstr(text)), Not(HasSubstr(Wide(FromUtf8(text))))));
}

TEST(BinarySave, LeavesNothingOfWhatWasReplaced)
{
    const BinaryOnDisk deck(WithFirstSlide(u"the newest cat", u"one more cat")
                                .DocumentSummary(13, TextsValue({"the newest cat"}))
                                .After(WithCats()));
    ASSERT_EQ(CountOfEdits(deck.Bytes()), 2);
    EXPECT_THAT(deck.Texts(), Contains("slide 1 shape 1 (14): the newest cat"));

    EXPECT_EQ(ReplaceCats(deck), 2);

    ExpectGone(deck.Bytes(), "cat");
    EXPECT_THAT(deck.Texts(),
                AllOf(Contains("slide 1 shape 1 (14): the newest dog"), Contains("slide 1 shape 2 (17): one more dog"),
                      Contains("slide 2 shape 1 (14): the last dog")));
}

TEST(BinarySave, OfAFileWithOneEditKeepsEveryOtherRecord)
{
    const std::string unknown = Atom(0x7777, "a record that nobody knows", 1);
    const BinaryOnDisk deck(WithAnimals(u"cat", unknown));

    ReplaceCats(deck);

    EXPECT_EQ(deck.Stream("PowerPoint Document"), WithAnimals(u"dog", unknown).DocumentStream());
}

TEST(BinarySave, MakesOneEditOfMany)
{
    BinaryDeck content = WithCats();
    for (int edit = 0; edit < 20; ++edit)
        content = WithLastTitle(u"cat number " + FromUtf8(std::to_string(edit))).After(content);
    const BinaryOnDisk deck(content);
    ASSERT_EQ(CountOfEdits(deck.Bytes()), 21);
    const std::size_t before = deck.Stream("PowerPoint Document").size();

    ReplaceCats(deck);

    const std::string stream = deck.Stream("PowerPoint Document");
    EXPECT_LT(stream.size(), before / 3);
    EXPECT_EQ(CountIn(stream, 4085), 1);
    EXPECT_THAT(deck.Texts(), Contains("slide 2 shape 1 (14): dog number 19"));
}

TEST(BinarySave, ReadsNumbersOfObjectsWithGapsAndGapsBetweenObjects)
{
    // The number of the document is none of the first ones, either.
    constexpr std::uint32_t document = 100;
    const BinaryOnDisk deck(WithCats()
                                .PersistStep(3)
                                .Junk(std::string(13, '\xEE'))
                                .ChangeOffsets([=](std::map<std::uint32_t, std::uint32_t>& offsets) {
                                    offsets[document] = offsets.at(BinaryDeck::DocumentId);
                                    offsets.erase(BinaryDeck::DocumentId);
                                })
                                .ChangeEdit([=](UserEdit& edit) { edit.document = edit.seed = document; }));

    EXPECT_EQ(ReplaceCats(deck), 2);

    EXPECT_THAT(deck.Texts(), Contains("slide 2 shape 1 (14): the last dog"));
}

TEST(BinarySave, WorksWithoutTheStreamOfTheCurrentUser)
{
    const BinaryOnDisk deck(WithLastTitle(u"a later cat").After(WithCats()).WithoutCurrentUser());

    EXPECT_EQ(ReplaceCats(deck), 2);

    EXPECT_THAT(deck.Texts(), Contains("slide 2 shape 1 (14): a later dog"));
    EXPECT_FALSE(CompoundFile(deck.Bytes()).Has("Current User"));
}

TEST(BinarySave, TellsTheCurrentUserWhereTheEditIs)
{
    const BinaryOnDisk deck(WithCats());

    ReplaceCats(deck);

    const std::string user = deck.Stream("Current User");
    const std::string stream = deck.Stream("PowerPoint Document");
    EXPECT_EQ(At(user, 16), stream.size() - RecordsOf(stream).back().data.size() - 8);
    EXPECT_EQ(RecordsOf(stream).back().type, 4085u);
}

TEST(BinarySave, OfADualFileChangesTheNewerStreams)
{
    const BinaryOnDisk deck(WithCats().DualStorage());
    const std::string older = deck.Stream("PowerPoint Document");
    ASSERT_NE(older, WithCats().DocumentStream());

    EXPECT_EQ(ReplaceCats(deck), 2);

    EXPECT_THAT(deck.Texts(), Contains("slide 1 shape 1 (14): a dog"));
    EXPECT_EQ(deck.Stream("PowerPoint Document"), older);
}

TEST(BinarySave, KeepsOtherStreamsWithNamesClassIdsAndTimes)
{
    const std::string pictures(10'000, 'p');
    const CompoundMarks marks{
        .classId = {1, 2, 3}, .state = 0x1234, .created = 0x01C0'1234'5678'0000, .modified = 0x01C0'2345'6789'0000};
    const BinaryOnDisk deck(WithCats().ChangeFile([&](CompoundBuilder& file) {
        file.Stream("Pictures", pictures)
            .Stream("small", "small")
            .Stream("empty", "")
            .Stream("Macros/VBA", std::string(5'000, 'v'))
            .Stream("Macros/dir", "dir")
            .Marks("", marks)
            .Marks("Macros", marks);
    }));
    const std::string before = deck.Bytes();

    ReplaceCats(deck);

    const std::string after = deck.Bytes();
    EXPECT_NE(after, before);
    const auto entriesOf = [](const std::string& bytes) {
        const auto source = BytesInMemory(std::as_bytes(std::span(bytes)));
        const builtin::CompoundFile directory(*source);
        std::vector<std::string> told;
        for (std::size_t i = 0; i < directory.Entries().size(); ++i) {
            const auto& entry = directory.Entries()[i];
            // All of its record but where the stream lies and how long it is.
            const bool isFree = entry.name == u"PowerPoint Document" || entry.name == u"Current User";
            told.push_back(std::string(directory.Record(i).substr(0, 116)) +
                           (isFree || entry.kind != builtin::CompoundEntry::Kind::Stream ? "" : directory.Bytes(i)));
        }
        return told;
    };
    EXPECT_TRUE(entriesOf(after) == entriesOf(before));  // too long to be printed
    EXPECT_EQ(CompoundFile(after).Stream("Pictures"), pictures);
    EXPECT_EQ(CompoundFile(after).Stream("small"), "small");
    EXPECT_NO_THROW(EntriesOf(after));
}

TEST(BinarySave, WithoutAChangeLeavesEveryByte)
{
    const BinaryOnDisk deck(WithCats());
    const std::string before = deck.Bytes();

    EXPECT_EQ(deck.Replace(Location::Slides, u"no such text", u"x"), 0);

    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinarySave, MayFollowAnother)
{
    const BinaryOnDisk deck(WithCats());
    const auto presentation = deck.Open();

    ReplaceInShape(*presentation, 1, 1, u"cat", u"dog");
    presentation->Save();
    ReplaceInShape(*presentation, 1, 2, u"cat", u"lion");
    presentation->Save();

    EXPECT_THAT(BinaryOnDisk(deck.Bytes()).Texts(),
                AllOf(Contains("slide 1 shape 1 (14): a dog"), Contains("slide 1 shape 2 (17): another lion"),
                      Contains("slide 2 shape 1 (14): the last cat")));
}

TEST(BinarySave, DropsPagesThatNoListNames)
{
    const BinaryOnDisk cut(
        BinaryDeck().Slide(Title(u"a cat"), TextBox(u"another cat")).Slide(Title(u"the last cat"), UnlistedSlide()));
    ASSERT_EQ(CountIn(cut.Stream("PowerPoint Document"), 1006), 2);

    ReplaceCats(cut);

    ASSERT_EQ(All(cut.Open()->Slides()).size(), 1u);
    EXPECT_EQ(CountIn(cut.Stream("PowerPoint Document"), 1006), 1);
}

TEST(BinarySave, FollowsTitlesInTheProperties)
{
    const BinaryOnDisk deck(WithCats().DocumentSummary(13, TextsValue({"Arial", "Plain", "a cat", "the last cat"})));

    ReplaceCats(deck);

    EXPECT_THAT(deck.Stream(documentSummaryName),
                AllOf(HasSubstr("a dog"), HasSubstr("the last dog"), HasSubstr("Arial"), Not(HasSubstr("cat"))));
}

TEST(BinarySave, TakesSignaturesOutThatAreWorthNothingAnyMore)
{
    const BinaryOnDisk deck(WithCats().ChangeFile([](CompoundBuilder& file) {
        file.Stream("_signatures", "signed").Stream("_xmlsignatures/1", "signed").Stream("_xmlsignatures/2", "signed");
        for (int i = 0; i < 20; ++i)
            file.Stream("stream " + std::to_string(i), "kept " + std::to_string(i));
    }));

    deck.Replace(Location::Slides, u"no such text", u"x");
    EXPECT_TRUE(CompoundFile(deck.Bytes()).Has("_signatures"));
    ReplaceCats(deck);

    const std::string bytes = deck.Bytes();
    const CompoundFile file(bytes);
    EXPECT_FALSE(file.Has("_signatures"));
    EXPECT_FALSE(file.Has("_xmlsignatures"));
    EXPECT_THAT(bytes, Not(HasSubstr("signed")));
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(file.Stream("stream " + std::to_string(i)), "kept " + std::to_string(i));
    EXPECT_THAT(deck.Texts(), Contains("slide 1 shape 1 (14): a dog"));
}

TEST(BinarySave, MovesTheRangesOfAnimations)
{
    const auto animated = [](std::uint32_t shape) {
        return BinaryDeck().Slide(Title(u"a cat"), TextBox(u"another cat"), TextAnimation(8, 11, shape));
    };
    const BinaryDeck plain = animated(0);
    const auto objects = LiveObjects(plain.Bytes());
    const auto numberOf = [&](std::uint32_t object, std::size_t shape) {
        return At(FindRecords(objects.at(object), 0xF00A).at(shape).data, 0);
    };
    // Shapes count from 1, behind the one of the drawing itself.
    const std::uint32_t edited = numberOf(plain.SlideId(1), 2);
    const std::uint32_t ofMaster = numberOf(plain.MasterId(), 2);
    for (const std::uint32_t shape : {edited, ofMaster}) {
        const BinaryOnDisk file(animated(shape));
        EXPECT_EQ(file.Replace(Location::ShapesAndTextboxes, u"another", u"some other"), 1);
        const std::string blob = FirstRecord(FirstRecord(SlidesOf(file.Bytes()).at(0), 5002), 5003);
        EXPECT_EQ(FirstRecord(blob, 0x2AFB).substr(12), shape == edited ? Long(11) + Long(14) : Long(8) + Long(11));
    }
}

TEST(BinarySave, OfAnEncryptedFileIsNotReached)
{
    constexpr std::uint32_t missing = 99;
    constexpr std::uint32_t encryptedToken = 0xF3D1'C4DF;
    const BinaryOnDisk deck(WithCats()
                                .ChangeEdit([=](UserEdit& edit) { edit.encryptSession = missing; })
                                .ChangeCurrentUser([](std::string& user) { PutLong(user, 12, encryptedToken); }));

    EXPECT_THAT(RaisedBy([&] { deck.Open(); }), FailsWith(FailureNumber::Unspecified, "needs a password"));
}

TEST(BinaryProperty, ThatItsCodePageCanNotHoldIsWide)
{
    const std::string kot = "\xEA\xEE\xF2";
    const BinaryOnDisk deck(WithCats().CodePage(1251).Summary(2, TextValue(kot)).Custom("Kot", TextValue(kot)));

    EXPECT_EQ(deck.Replace(Location::BuiltinProperies, u"\u043A\u043E\u0442", u"\u732B \u043A"), 1);
    EXPECT_EQ(deck.Replace(Location::CustomProperties, u"\u043A\u043E\u0442", u"\u043F\u0451\u0441"), 1);

    const auto presentation = deck.Open();
    EXPECT_EQ(powerpoint::TextOf(PropertyOf(*presentation->BuiltInDocumentProperties(), u"Title")->Value()),
              u"\u732B \u043A");
    EXPECT_EQ(powerpoint::TextOf(PropertyOf(*presentation->CustomDocumentProperties(), u"Kot")->Value()),
              u"\u043F\u0451\u0441");
    EXPECT_THAT(deck.Stream(documentSummaryName), HasSubstr("\xEF\xB8\xF1"));
}

TEST(BinaryProperty, OfEveryCodePageReadsAsItWasMeant)
{
    const std::vector<std::tuple<int, std::string, String>> rows{
        {1252, "\xE4\x80", u"\u00E4\u20AC"}, {1250, "\xE8", u"\u010D"},    {932, "\x94\x4C", u"\u732B"},
        {936, "\xC3\xA8", u"\u732B"},        {949, "\xB0\xED", u"\uACE0"}, {65001, "\xE7\x8C\xAB", u"\u732B"},
        {10000, "\x8A", u"\u00E4"},          {10029, "\x8B", u"\u010D"},   {1255, "\xE0", u"\u05D0"}};
    for (const auto& [codePage, bytes, text] : rows) {
        const BinaryOnDisk deck(BinaryDeck().CodePage(codePage).Summary(2, TextValue(bytes)));
        EXPECT_EQ(powerpoint::TextOf(PropertyOf(*deck.Open()->BuiltInDocumentProperties(), u"Title")->Value()), text)
            << codePage;
    }
}

TEST(BinaryProperty, OfAKindThatNobodyEditsStays)
{
    const BinaryOnDisk deck(WithCats().Custom("Blob", BlobValue("\1cat\1cat")).Custom("Wide", WideValue(u"cat")));

    EXPECT_EQ(deck.Replace(Location::CustomProperties, u"cat", u"dog"), 1);

    const auto custom = deck.Open()->CustomDocumentProperties();
    EXPECT_EQ(powerpoint::TextOf(PropertyOf(*custom, u"Blob")->Value()), u"");
    EXPECT_EQ(powerpoint::TextOf(PropertyOf(*custom, u"Wide")->Value()), u"dog");
    EXPECT_THAT(deck.Stream(documentSummaryName), HasSubstr("\1cat\1cat"));
}

TEST(BinaryProperty, OfHyperlinksIsHiddenAndItsListGoesWithAChangedAddress)
{
    const std::u16string address = u"http://cat.example/";
    const BinaryOnDisk deck(BinaryDeck()
                                .Slide(Title(u"a cat"), TextBox(u"another cat").Click(LinkTo(address)))
                                .Custom("_PID_HLINKS", LinksValue({{address, u""}}))
                                .Custom("_PID_LINKBASE", BlobValue(Wide(u"bas") + Short(0)))
                                .Custom("Client", TextValue("text")));
    ASSERT_THAT(deck.Stream(documentSummaryName), HasSubstr(Wide(address)));

    deck.Replace(Location::HyperlinkAddresses, u"cat", u"dog");

    const auto presentation = deck.Open();
    EXPECT_EQ(presentation->CustomDocumentProperties()->Count(), 1);
    EXPECT_EQ(powerpoint::TextOf(PropertyOf(*presentation->BuiltInDocumentProperties(), u"Hyperlink base")->Value()),
              u"bas");
    EXPECT_THAT(deck.Stream(documentSummaryName), Not(HasSubstr(Wide(u"example"))));
}

}  // namespace
}  // namespace tessarine::test::ppt
