#include <gmock/gmock.h>

#include "BinaryOnDisk.h"

/// Document properties of binary presentations under a job: what is counted and written, and how a revision rises.
namespace tessarine::test::ppt
{
namespace
{

using powerpoint::Value;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

const std::vector<Location> builtInOnes{Location::BuiltinProperies};
const std::vector<Location> customOnes{Location::CustomProperties};

/// A pair that finds nothing, in a deck with a slide.
const std::vector<BinaryPair> nothingToFind{{u"no such text", u"", {Location::Slides}}};

BinaryDeck WithRevision(std::string value)
{
    return BinaryDeck().Slide(Title(u"a cat")).Custom("Revision", std::move(value));
}

/// A job that lets "REVISION" rise.
BinaryJob Rising(const String& by)
{
    return {.revision = u"REVISION", .increment = by};
}

TEST(BinaryRevisions, RiseUnderANameInAnyCase)
{
    const BinaryOnDisk deck(WithRevision(NumberValue(3)));

    const BinaryOutcome outcome = deck.Process(nothingToFind, Rising(u"1"));

    // Without an occurrence, too.
    EXPECT_EQ(outcome.results->FileStausAfterProcess, FileStatus::NothingCounted);
    EXPECT_EQ(std::get<std::int64_t>(deck.CustomValue(u"Revision")), std::int64_t{4});
}

TEST(BinaryRevisions, RiseInSmallNumbersRealsAndTexts)
{
    const BinaryOnDisk shortNumber(WithRevision(ShortValue(3)));
    const BinaryOnDisk real(WithRevision(RealValue(3.25)));
    const BinaryOnDisk text(WithRevision(TextValue("3")));
    for (const auto* deck : {&shortNumber, &real, &text})
        deck->Process(nothingToFind, Rising(u"1"));

    EXPECT_EQ(std::get<std::int64_t>(shortNumber.CustomValue(u"Revision")), std::int64_t{4});
    EXPECT_EQ(std::get<double>(real.CustomValue(u"Revision")), 4.25);
    EXPECT_EQ(std::get<String>(text.CustomValue(u"Revision")), u"4");
}

TEST(BinaryRevisions, RiseByFractions)
{
    const BinaryOnDisk deck(WithRevision(NumberValue(1)));

    deck.Process(nothingToFind, Rising(u"0.5"));

    EXPECT_EQ(std::get<double>(deck.CustomValue(u"Revision")), 1.5);
}

TEST(BinaryRevisions, ThatAreNoNumbersStay)
{
    const BinaryOnDisk deck(WithRevision(TextValue("A")));
    const std::string before = deck.Bytes();

    const BinaryOutcome outcome = deck.Process(nothingToFind, Rising(u"1"));

    EXPECT_EQ(std::get<String>(deck.CustomValue(u"Revision")), u"A");
    EXPECT_THAT(outcome.log, IsEmpty());
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryRevisions, StayWhereTheIncrementIsNoNumber)
{
    const BinaryOnDisk deck(WithRevision(NumberValue(3)));
    const std::string before = deck.Bytes();

    deck.Process(nothingToFind, Rising(u""));
    deck.Process(nothingToFind, Rising(u"one"));

    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryRevisions, WithoutANameAreNone)
{
    const BinaryOnDisk deck(WithRevision(NumberValue(3)));
    const std::string before = deck.Bytes();

    const BinaryOutcome outcome = deck.Process(nothingToFind, {.revision = u"", .increment = u"1"});

    EXPECT_THAT(outcome.log, IsEmpty());
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryRevisions, OfOneNameRiseAll)
{
    // In the code page of the section, as the capital letter that is asked for.
    const BinaryOnDisk deck(BinaryDeck()
                                .Custom("\xDC"
                                        "berarbeitung",
                                        NumberValue(1))
                                .Custom("Other", NumberValue(1))
                                .Custom("\xFC"
                                        "BERARBEITUNG",
                                        NumberValue(5)));

    deck.Process(nothingToFind, {.revision = u"\u00DCberarbeitung", .increment = u"2"});

    EXPECT_EQ(std::get<std::int64_t>(deck.CustomValue(u"\u00DCberarbeitung")), std::int64_t{3});
    EXPECT_EQ(std::get<std::int64_t>(deck.CustomValue(u"Other")), std::int64_t{1});
    EXPECT_EQ(std::get<std::int64_t>(deck.CustomValue(u"\u00FCBERARBEITUNG")), std::int64_t{7});
}

TEST(BinaryRevisions, AreLostInAFindRun)
{
    const BinaryOnDisk deck(WithRevision(NumberValue(3)));
    const std::string before = deck.Bytes();
    BinaryJob job = Rising(u"1");
    job.isFindOnly = true;

    // The run itself sees it.
    EXPECT_EQ(deck.Process({{u"4", u"", customOnes}}, job).Count(customOnes[0]), 1);

    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryRevisions, RiseBesideReplacements)
{
    const BinaryOnDisk deck(WithRevision(NumberValue(3)).Custom("Client", TextValue("a cat")));

    const BinaryOutcome outcome =
        deck.Process({{u"cat", u"dog", {Location::Slides, Location::CustomProperties}}}, Rising(u"1"));

    EXPECT_EQ(outcome.Count(Location::Slides), 1);
    EXPECT_EQ(outcome.Count(Location::CustomProperties), 1);
    EXPECT_EQ(std::get<std::int64_t>(deck.CustomValue(u"Revision")), std::int64_t{4});
    EXPECT_EQ(std::get<String>(deck.CustomValue(u"Client")), u"a dog");
    EXPECT_THAT(deck.Texts(), Contains("slide 1 shape 1 (14): a dog"));
}

TEST(BinaryBuiltInProperties, ThatCanNotBeReadRepeatTheCountBefore)
{
    constexpr std::uint32_t program = 18;
    constexpr std::uint32_t printed = 11;
    constexpr std::uint64_t someDay = 130'000'000'000'000'000;
    // Behind the program's name stand three dates, one of which has a value.
    const BinaryOnDisk deck(BinaryDeck().Summary(program, TextValue("cat cat")).Summary(printed, TimeValue(someDay)));

    EXPECT_EQ(deck.Find(builtInOnes[0], u"cat"), 2);
    EXPECT_EQ(deck.Replace(builtInOnes[0], u"cat", u"dog"), 2);

    // Where it has none, all three repeat it.
    EXPECT_EQ(BinaryOnDisk(BinaryDeck().Summary(program, TextValue("cat cat"))).Find(builtInOnes[0], u"cat"), 8);
}

TEST(BinaryBuiltInProperties, OfWhichTheFirstCanNotBeReadAddNothingForIt)
{
    constexpr std::uint32_t title = 2;
    constexpr std::uint32_t subject = 3;
    const std::string tooLong(800'000, 'a');
    const BinaryOnDisk deck(
        BinaryDeck().Summary(title, TextValue(tooLong + "cat")).Summary(subject, TextValue("a cat")));
    ASSERT_NE(RaisedBy([&] { deck.BuiltInText(u"Title"); }).number, 0);

    EXPECT_EQ(deck.Replace(builtInOnes[0], u"cat", u"dog"), 1);

    EXPECT_EQ(deck.BuiltInText(u"Subject"), u"a dog");
    EXPECT_THAT(deck.Stream("\x05SummaryInformation"), HasSubstr(tooLong + "cat"));
}

TEST(BinaryBuiltInProperties, AreWrittenAsText)
{
    constexpr std::uint32_t revision = 9;
    const BinaryOnDisk deck(BinaryDeck().Summary(revision, NumberValue(7)));
    const std::string before = deck.Bytes();

    EXPECT_EQ(deck.Replace(builtInOnes[0], u"cat", u"dog"), 0);
    EXPECT_EQ(deck.BuiltInText(u"Revision number"), u"7");
    EXPECT_EQ(deck.Bytes(), before);
    EXPECT_EQ(deck.Replace(builtInOnes[0], u"7", u"seven"), 1);

    EXPECT_EQ(deck.BuiltInText(u"Revision number"), u"seven");
}

TEST(BinaryCustomProperties, WithoutAnOccurrenceKeepTheirTypes)
{
    constexpr std::uint64_t someDay = 130'000'000'000'000'000;
    const BinaryOnDisk deck(BinaryDeck()
                                .Custom("Number", NumberValue(7))
                                .Custom("Real", RealValue(2.5))
                                .Custom("Truth", TruthValue(true))
                                .Custom("Day", TimeValue(someDay))
                                .Custom("Client", TextValue("a cat")));

    EXPECT_EQ(deck.Replace(customOnes[0], u"cat", u"a longer dog"), 1);

    EXPECT_EQ(std::get<std::int64_t>(deck.CustomValue(u"Number")), std::int64_t{7});
    EXPECT_EQ(std::get<double>(deck.CustomValue(u"Real")), 2.5);
    EXPECT_TRUE(std::get<bool>(deck.CustomValue(u"Truth")));
    EXPECT_TRUE(std::holds_alternative<powerpoint::Date>(deck.CustomValue(u"Day")));
    EXPECT_EQ(std::get<String>(deck.CustomValue(u"Client")), u"a a longer dog");
}

TEST(BinaryCustomProperties, OfAnotherTypeBecomeTextWithAnOccurrence)
{
    const BinaryOnDisk deck(BinaryDeck().Custom("Number", NumberValue(71)).Custom("Other", NumberValue(5)));

    EXPECT_EQ(deck.Replace(customOnes[0], u"7", u"8"), 1);

    EXPECT_EQ(std::get<String>(deck.CustomValue(u"Number")), u"81");
    EXPECT_EQ(std::get<std::int64_t>(deck.CustomValue(u"Other")), std::int64_t{5});
}

TEST(BinaryCustomProperties, OfAPairWithoutAProjectEndTheFile)
{
    const BinaryOnDisk deck(BinaryDeck().Slide(Title(u"a cat")).Custom("Client", TextValue("text")));
    const std::string before = deck.Bytes();
    const BinaryPair pair{.find = u"cat",
                          .with = u"dog",
                          .locations = {Location::Slides, Location::CustomProperties},
                          .belongsToProject = false};

    const BinaryOutcome outcome = deck.Process({pair});

    EXPECT_THAT(outcome.failure, FailsWith(FailureNumber::ObjectNotSet, "in procedure CustomProperties "));
    EXPECT_EQ(outcome.results, nullptr);
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryCustomProperties, ThatThereAreNotNeedNoProject)
{
    const BinaryOnDisk deck(BinaryDeck().Slide(Title(u"a cat")));
    const BinaryPair pair{.find = u"cat",
                          .with = u"dog",
                          .locations = {Location::Slides, Location::CustomProperties},
                          .belongsToProject = false};

    const BinaryOutcome outcome = deck.Process({pair});

    EXPECT_EQ(outcome.failure.number, 0);
    EXPECT_EQ(outcome.Count(Location::CustomProperties), 0);
    EXPECT_THAT(deck.Texts(), Contains("slide 1 shape 1 (14): a dog"));
}

}  // namespace
}  // namespace tessarine::test::ppt
