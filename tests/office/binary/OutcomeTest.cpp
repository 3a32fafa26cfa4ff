#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>

#include "BinaryOnDisk.h"

/// What a job of several pairs tells of a binary presentation: counts, the states of pairs and of the file.
namespace tessarine::test::ppt
{
namespace
{

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::IsEmpty;

constexpr std::int32_t notSearched = -1;

/// Two cats in placeholders, one in a text box, one in the notes.
BinaryDeck OfCats()
{
    return BinaryDeck().Slide(Title(u"a cat"), Body(u"another cat"), TextBox(u"the cat"), NotesPage(u"cats"),
                              HeadersFooters().Header(u"cat").Footer(u"cat"));
}

/// Gives the file a time of long ago, so that any later one differs.
std::filesystem::file_time_type MakeOld(const std::filesystem::path& path)
{
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) - std::chrono::hours(24 * 365 * 10));
    return std::filesystem::last_write_time(path);
}

std::vector<Location> AllLocations()
{
    std::vector<Location> all;
    for (const SearchLocation& row : SearchLocations)
        all.push_back(row.location);
    return all;
}

TEST(BinaryOutcomes, OfAFileWithoutAnOccurrenceAreZeroWhereItWasSearched)
{
    const BinaryOnDisk deck(OfCats());
    const std::filesystem::path path(deck.Path());
    const std::string before = deck.Bytes();
    const std::vector<BinaryPair> pairs{{u"no such text", u"dog", {Location::Slides, Location::Notes}}};
    const auto old = MakeOld(path);

    deck.Process(pairs, {.isFindOnly = true});
    EXPECT_EQ(std::filesystem::last_write_time(path), old);
    const BinaryOutcome outcome = deck.Process(pairs);

    EXPECT_EQ(outcome.results->FileStausAfterProcess, FileStatus::NothingCounted);
    EXPECT_EQ(outcome.results->Item(1)->FileStausAfterProcess, FileStatus::NothingCounted);
    for (const Location location : AllLocations())
        EXPECT_EQ(outcome.Count(location),
                  location == Location::Slides || location == Location::Notes ? 0 : notSearched);
    // Saved, as any file of a replace run.
    EXPECT_NE(std::filesystem::last_write_time(path), old);
    EXPECT_EQ(outcome.results->HasNewContent, false);
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryOutcomes, OfTwoPairsAreEachTheirOwn)
{
    const BinaryOnDisk deck(OfCats());

    const BinaryOutcome outcome =
        deck.Process({{u"cat", u"dog", {Location::Slides}}, {u"no such text", u"lion", {Location::Slides}}});

    EXPECT_EQ(outcome.Count(Location::Slides, 1), 2);
    EXPECT_EQ(outcome.results->Item(1)->FileStausAfterProcess, FileStatus::Counted);
    EXPECT_EQ(outcome.Count(Location::Slides, 2), 0);
    EXPECT_EQ(outcome.results->Item(2)->FileStausAfterProcess, FileStatus::NothingCounted);
    EXPECT_EQ(outcome.results->FileStausAfterProcess, FileStatus::Counted);
    EXPECT_EQ(outcome.results->HasNewContent, true);
}

TEST(BinaryOutcomes, OfAPairFollowWhatThePairBeforePutIn)
{
    const BinaryOnDisk deck(OfCats());

    const BinaryOutcome outcome =
        deck.Process({{u"cat", u"dog", {Location::Slides, Location::Notes}}, {u"dog", u"lion", {Location::Slides}}});

    EXPECT_EQ(outcome.Count(Location::Slides, 2), 2);
    EXPECT_THAT(deck.Texts(),
                AllOf(Contains("slide 1 shape 1 (14): a lion"), Contains("slide 1 shape 2 (14): another lion"),
                      Contains("slide 1 shape 3 (17): the cat"), Contains("notes 1 shape 2 (14): dogs")));
}

TEST(BinaryOutcomes, OfAnEmptyTextRepeatTheCountBefore)
{
    const BinaryOnDisk deck(OfCats());

    const BinaryOutcome outcome = deck.Process({{u"cat", u"dog", {Location::Slides}},
                                                {u"", u"lion", {Location::Slides, Location::Notes, Location::Header}},
                                                {u"no such text", u"", {Location::Notes}},
                                                {u"", u"lion", {Location::Slides}}});

    EXPECT_EQ(outcome.Count(Location::Slides, 2), 2);
    EXPECT_EQ(outcome.Count(Location::Notes, 2), 2);
    EXPECT_EQ(outcome.Count(Location::Header, 2), 2);
    EXPECT_EQ(outcome.Count(Location::Links, 2), notSearched);
    EXPECT_EQ(outcome.results->Item(2)->FileStausAfterProcess, FileStatus::Counted);
    EXPECT_EQ(outcome.Count(Location::Slides, 4), 0);
    EXPECT_EQ(outcome.results->Item(4)->FileStausAfterProcess, FileStatus::NothingCounted);
    EXPECT_THAT(deck.Texts(), AllOf(Contains("slide 1 shape 1 (14): a dog"), Contains("notes 1 shape 2 (14): cats")));
}

TEST(BinaryOutcomes, OfHeadersAreZero)
{
    const BinaryOnDisk deck(OfCats());
    const std::string before = deck.Bytes();

    const BinaryOutcome outcome = deck.Process({{u"cat", u"dog", {Location::Header}}});

    EXPECT_EQ(outcome.Count(Location::Header), 0);
    EXPECT_EQ(outcome.results->FileStausAfterProcess, FileStatus::NothingCounted);
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryOutcomes, OfAPairWithoutLocationsAreNone)
{
    const BinaryOnDisk deck(OfCats());
    const std::string before = deck.Bytes();

    const BinaryOutcome outcome = deck.Process({{u"cat", u"dog", {}}});

    EXPECT_THAT(outcome.results->Item(1)->Counts(), Each(notSearched));
    EXPECT_EQ(outcome.results->Item(1)->FileStausAfterProcess, FileStatus::NothingCounted);
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryOutcomes, OfAnOccurrenceStayWhereALaterLocationHasNone)
{
    const BinaryOnDisk deck(OfCats());

    const BinaryOutcome outcome = deck.Process({{u"another", u"one", {Location::Slides, Location::TitleMaster}}});

    EXPECT_EQ(outcome.Count(Location::Slides), 1);
    EXPECT_EQ(outcome.Count(Location::TitleMaster), 0);
    EXPECT_EQ(outcome.results->Item(1)->FileStausAfterProcess, FileStatus::Counted);
}

TEST(BinaryOutcomes, OfAFileChangedInAFooterAloneAreThoseOfAnUnchangedOne)
{
    const BinaryOnDisk deck(OfCats());
    const std::vector<BinaryPair> pairs{{u"cat", u"dog", {Location::Footer}}};

    EXPECT_EQ(deck.Process(pairs, {.isFindOnly = true}).Count(Location::Footer), 0);
    const BinaryOutcome outcome = deck.Process(pairs);

    EXPECT_EQ(outcome.Count(Location::Footer), 0);
    EXPECT_EQ(outcome.results->FileStausAfterProcess, FileStatus::NothingCounted);
    EXPECT_EQ(outcome.results->HasNewContent, true);
    EXPECT_THAT(deck.Texts(), Contains("slide 1 footer: dog"));
}

TEST(BinaryOutcomes, OfAnEmptyPresentationAreZeroEverywhere)
{
    const BinaryOnDisk deck{BinaryDeck().Master(MainMaster(u"A", TextBox(u"")))};
    const std::string before = deck.Bytes();

    const BinaryOutcome outcome = deck.Process({{u"cat", u"dog", AllLocations()}});

    EXPECT_THAT(outcome.results->Item(1)->Counts(), Each(0));
    EXPECT_THAT(outcome.log, IsEmpty());
    EXPECT_EQ(deck.Bytes(), before);
}

}  // namespace
}  // namespace tessarine::test::ppt
