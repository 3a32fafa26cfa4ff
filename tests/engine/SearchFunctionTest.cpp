#include "engine/TextRangeWalk.h"
#include "EngineTest.h"
#include "support/MessageRecorder.h"

namespace tessarine
{

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SearchFunctionTest : public EngineTest
{
protected:
    std::int32_t SearchIn(const String& initial)
    {
        *text = initial;
        return engine.SearchFunction(FakeTextRangeOver(text, script));
    }

    std::shared_ptr<String> text = std::make_shared<String>();
};

/// A range in which every call hits, at a position that the test settles.
class AlwaysHits : public powerpoint::TextRange
{
public:
    explicit AlwaysHits(std::int32_t start) : start_(start) {}

    std::shared_ptr<TextRange> Find(const String&, std::int32_t After, powerpoint::TriState,
                                    powerpoint::TriState) override
    {
        afters.push_back(After);
        return std::make_shared<AlwaysHits>(start_);
    }

    std::shared_ptr<TextRange> Replace(const String&, const String&, std::int32_t After, powerpoint::TriState,
                                       powerpoint::TriState) override
    {
        afters.push_back(After);
        return std::make_shared<AlwaysHits>(start_);
    }

    std::int32_t Start() override { return start_; }

    std::vector<std::int32_t> afters;

private:
    std::int32_t start_;
};

/// Writes down the arguments and never hits.
class NeverHits : public powerpoint::TextRange
{
public:
    std::shared_ptr<TextRange> Find(const String& FindWhat, std::int32_t After, powerpoint::TriState MatchCase,
                                    powerpoint::TriState WholeWords) override
    {
        call = "Find " + ToUtf8(FindWhat) + Numbers(After, MatchCase, WholeWords);
        return nullptr;
    }

    std::shared_ptr<TextRange> Replace(const String& FindWhat, const String& ReplaceWhat, std::int32_t After,
                                       powerpoint::TriState MatchCase, powerpoint::TriState WholeWords) override
    {
        call = "Replace " + ToUtf8(FindWhat) + " " + ToUtf8(ReplaceWhat) + Numbers(After, MatchCase, WholeWords);
        return nullptr;
    }

    std::int32_t Start() override { return 0; }

    std::string call;

private:
    static std::string Numbers(std::int32_t after, powerpoint::TriState matchCase, powerpoint::TriState wholeWords)
    {
        return " " + std::to_string(after) + " " + std::to_string(matchCase) + " " + std::to_string(wholeWords);
    }
};

TEST_F(SearchFunctionTest, AFindWithoutACountStopsAtTheFirstHit)
{
    Look({.find = u"a", .findOnly = true, .countAll = false});

    EXPECT_EQ(SearchIn(u"a a a a a"), 1);
    EXPECT_EQ(script.Count("TextRange.Find"), 1);
}

TEST_F(SearchFunctionTest, AFindCountsEveryHitWhenACountIsRequired)
{
    Look({.find = u"a", .findOnly = true, .countAll = true});

    EXPECT_EQ(SearchIn(u"a a a a a"), 5);
    EXPECT_EQ(*text, u"a a a a a");
}

TEST_F(SearchFunctionTest, AReplaceHandlesEveryHitWithoutACountToo)
{
    for (const bool countAll : {false, true}) {
        Look({.find = u"a", .with = u"bb", .countAll = countAll});

        EXPECT_EQ(SearchIn(u"a a a a a"), 5);
        EXPECT_EQ(*text, u"bb bb bb bb bb");
    }
}

TEST_F(SearchFunctionTest, ATextWithoutAHitGivesZero)
{
    Look({.find = u"x", .with = u"y"});

    EXPECT_EQ(SearchIn(u"a a"), 0);
    EXPECT_EQ(*text, u"a a");
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(SearchFunctionTest, AFindCountsHitsThatOverlap)
{
    Look({.find = u"aa", .findOnly = true});

    // Each search starts from the character that follows the first one of the last hit.
    EXPECT_EQ(SearchIn(u"aaaa"), 3);
}

TEST_F(SearchFunctionTest, AReplacementThatBeginsWithTheFindTextEnds)
{
    Look({.find = u"cat", .with = u"cats"});

    EXPECT_EQ(SearchIn(u"cat cat"), 2);
    EXPECT_EQ(*text, u"cats cats");
}

TEST_F(SearchFunctionTest, AReplacementWithTheFindTextLaterIsFoundAgain)
{
    Look({.find = u"cat", .with = u"a cat"});
    script.FailOnce("TextRange.Replace", 1234, u"enough", 4);

    EXPECT_EQ(SearchIn(u"cat"), 0);
    EXPECT_EQ(*text, u"a a a cat");
}

TEST_F(SearchFunctionTest, AnEndlessReplaceGoesOnUntilTheCountIsFull)
{
    Look({.find = u"cat", .with = u"a cat"});
    AlwaysHits range(1);

    const Failure failure = FailureOf([&] { ReplaceInTextRange<std::int8_t>(engine, range); });

    EXPECT_EQ(failure.number, 6);
    EXPECT_EQ(failure.description, u"Overflow");
    EXPECT_EQ(range.afters.size(), 128u);
}

TEST_F(SearchFunctionTest, AnEndlessFindGoesOnUntilTheCountIsFull)
{
    Look({.find = u"cat", .findOnly = true});
    AlwaysHits range(1);

    const Failure failure = FailureOf([&] { FindInTextRange<std::int8_t>(engine, range); });

    EXPECT_EQ(failure.number, 6);
    EXPECT_EQ(range.afters.size(), 128u);
}

TEST_F(SearchFunctionTest, AnOverflowOfTheCountIsLoggedAndGivesZero)
{
    Look({.find = u"cat", .with = u"a cat"});
    script.FailOnce("TextRange.Replace", 6, u"Overflow", 3);

    EXPECT_EQ(SearchIn(u"cat"), 0);

    EXPECT_THAT(Log(), ElementsAre("Error 6 (Overflow) in procedure SearchFunction at Line No. 0 of Class Module "
                                   "SearchFunctions"));
    EXPECT_EQ(*text, u"a a cat");
}

TEST_F(SearchFunctionTest, AReplaceEndsWhenTheReplacedRangeStartsAtZero)
{
    Look({.find = u"a", .with = u"b"});
    const auto range = std::make_shared<AlwaysHits>(0);

    EXPECT_EQ(engine.SearchFunction(range), 1);
    EXPECT_THAT(range->afters, ElementsAre(0));
}

TEST_F(SearchFunctionTest, EachSearchStartsAtTheLastHit)
{
    Look({.find = u"a", .with = u"b"});
    const auto range = std::make_shared<AlwaysHits>(7);
    int deliveries = 0;
    const auto before = SetDeliverPendingEvents([&] {
        if (++deliveries == 2)
            throw Failure(1, u"stop");
    });

    engine.SearchFunction(range);
    SetDeliverPendingEvents(before);

    EXPECT_THAT(range->afters, ElementsAre(0, 7));
}

TEST_F(SearchFunctionTest, FindIsHandedThePairAndTheFlags)
{
    Look({.find = u"Cat", .matchCase = true, .wholeWord = true, .findOnly = true});
    const auto range = std::make_shared<NeverHits>();

    engine.SearchFunction(range);

    EXPECT_EQ(range->call, "Find Cat 0 1 1");
}

TEST_F(SearchFunctionTest, ReplaceIsHandedThePairAndTheFlags)
{
    Look({.find = u"Cat", .with = u"Dog", .matchCase = false, .wholeWord = false});
    const auto range = std::make_shared<NeverHits>();

    engine.SearchFunction(range);

    EXPECT_EQ(range->call, "Replace Cat Dog 0 0 0");
}

TEST_F(SearchFunctionTest, AFailureAfterHitsGivesZeroAndKeepsReplacements)
{
    Look({.find = u"a", .with = u"b"});
    script.FailOnce("TextRange.Replace", 4711, u"gone", 3);

    EXPECT_EQ(SearchIn(u"a a a"), 0);

    EXPECT_EQ(*text, u"b b a");
    EXPECT_THAT(Log(), ElementsAre("Error 4711 (gone) in procedure SearchFunction at Line No. 0 of Class Module "
                                   "SearchFunctions"));
}

TEST_F(SearchFunctionTest, AFailingFindOrStartIsLoggedAndGivesZero)
{
    Look({.find = u"a", .findOnly = true});
    script.FailOnce("TextRange.Find", 4711, u"gone", 2);
    EXPECT_EQ(SearchIn(u"a a a"), 0);

    script.FailOnce("TextRange.Start", 4712, u"lost");
    EXPECT_EQ(SearchIn(u"a a a"), 0);

    EXPECT_THAT(Log(), ElementsAre("Error 4711 (gone) in procedure SearchFunction at Line No. 0 of Class Module "
                                   "SearchFunctions",
                                   "Error 4712 (lost) in procedure SearchFunction at Line No. 0 of Class Module "
                                   "SearchFunctions"));
}

TEST_F(SearchFunctionTest, AMissingRangeOrItemIsLoggedAndGivesZero)
{
    EXPECT_EQ(engine.SearchFunction(nullptr), 0);
    engine.mItem.reset();
    EXPECT_EQ(SearchIn(u"a"), 0);

    const std::string line =
        "Error 91 (Object variable or With block variable not set) in procedure SearchFunction at Line No. 0 of Class "
        "Module SearchFunctions";
    EXPECT_THAT(Log(), ElementsAre(line, line));
}

TEST_F(SearchFunctionTest, AFindYieldsAfterEveryHitButTheLast)
{
    Look({.find = u"a", .findOnly = true});
    Deliveries deliveries;

    SearchIn(u"a a a");
    EXPECT_EQ(deliveries.Count(), 3u);

    engine.IsRequiredCount = false;
    SearchIn(u"a a a");
    EXPECT_EQ(deliveries.Count(), 3u);
}

TEST_F(SearchFunctionTest, AReplaceYieldsAfterEveryHit)
{
    Look({.find = u"a", .with = u"b"});
    engine.mCPUUsage = true;
    Deliveries deliveries;

    SearchIn(u"a a a");

    EXPECT_EQ(deliveries.Count(), 3u);
    EXPECT_EQ(deliveries.AfterASleep(), 3u);
}

TEST_F(SearchFunctionTest, YieldSleepsOnlyUnderCpuControl)
{
    {
        Deliveries deliveries;
        engine.mCPUUsage = false;
        for (int step = 0; step < 40; ++step)
            engine.Yield();
        EXPECT_EQ(deliveries.Count(), 40u);
        EXPECT_EQ(deliveries.AfterASleep(), 0u);
    }
    {
        Deliveries deliveries;
        engine.mCPUUsage = true;
        for (int step = 0; step < 10; ++step)
            engine.Yield();
        EXPECT_EQ(deliveries.Count(), 10u);
        EXPECT_EQ(deliveries.AfterASleep(), 10u);
    }
}

TEST_F(SearchFunctionTest, PromptAndSearchMethodChangeNothing)
{
    Look({.find = u"a", .with = u"b"});
    engine.mItem->OptionSetting->PromptOnReplace = true;
    engine.mItem->OptionSetting->SearchMethod = 5;
    const MessageRecorder messages;

    EXPECT_EQ(SearchIn(u"a a"), 2);

    EXPECT_THAT(messages.Messages(), IsEmpty());
}

}  // namespace

}  // namespace tessarine
