#include "EngineTest.h"

namespace tessarine
{

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t untouched = -77;

class PlainTextTest : public EngineTest
{
protected:
    String Word(const String& source, const String& find, const String& with, std::int32_t compare = 0,
                std::int32_t start = 1, std::int32_t limit = -1)
    {
        return engine.ReplaceWord(source, find, with, start, limit, compare, count);
    }

    String All(const String& source, const String& find, const String& with, std::int32_t compare = 0)
    {
        return engine.ReplaceWord1(source, find, with, 1, -1, compare, count);
    }

    String FindandReplace(const String& text, bool isReplace = true)
    {
        return engine.FindandReplace(count, engine.mItem, text, isReplace);
    }

    std::int32_t count = untouched;
};

using ReplaceWordTest = PlainTextTest;
using ReplaceWord1Test = PlainTextTest;
using FindandReplaceTest = PlainTextTest;

TEST_F(ReplaceWordTest, LeavesAHitAloneWhenALetterTouchesIt)
{
    EXPECT_EQ(Word(u"cat catalog concat cat", u"cat", u"dog"), u"dog catalog concat dog");
    EXPECT_EQ(count, 2);
}

TEST_F(ReplaceWordTest, SkipsTheTextThatItPutIn)
{
    EXPECT_EQ(Word(u"a a", u"a", u"aa"), u"aa aa");
    EXPECT_EQ(count, 2);
}

struct BoundaryCase : Named {
    const char16_t* source;
    const char16_t* expected;
};

class WordBoundary : public PlainTextTest, public ::testing::WithParamInterface<BoundaryCase>
{
};

TEST_P(WordBoundary, IsEverythingButALetterFromAToZ)
{
    EXPECT_EQ(Word(GetParam().source, u"cat", u"dog"), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Characters, WordBoundary,
                         ::testing::Values(BoundaryCase{{"DigitAfter"}, u"cat7", u"dog7"},
                                           BoundaryCase{{"DigitBefore"}, u"7cat", u"7dog"},
                                           BoundaryCase{{"Underscores"}, u"_cat_", u"_dog_"},
                                           BoundaryCase{{"AccentedLetter"}, u"écat", u"édog"},
                                           BoundaryCase{{"LongSWhoseUpperCaseIsS"}, u"catſ", u"dogſ"},
                                           BoundaryCase{{"DotlessIWhoseUpperCaseIsI"}, u"ıcat", u"ıdog"},
                                           BoundaryCase{{"FullWidthLetter"}, u"catＡ", u"dogＡ"},
                                           BoundaryCase{{"GreekLetter"}, u"αcatω", u"αdogω"},
                                           BoundaryCase{{"Emoji"}, u"😀cat😀", u"😀dog😀"},
                                           BoundaryCase{{"LineBreaks"}, u"\rcat\n", u"\rdog\n"},
                                           BoundaryCase{{"Punctuation"}, u"(cat)", u"(dog)"},
                                           BoundaryCase{{"AtSignAndBracketBesideAToZ"}, u"@cat[", u"@dog["},
                                           BoundaryCase{{"GraveAndBraceBesideAToZ"}, u"`cat{", u"`dog{"},
                                           BoundaryCase{{"WholeText"}, u"cat", u"dog"},
                                           BoundaryCase{{"FirstUpperLetterBefore"}, u"Acat", u"Acat"},
                                           BoundaryCase{{"LastUpperLetterBefore"}, u"Zcat", u"Zcat"},
                                           BoundaryCase{{"FirstLowerLetterAfter"}, u"cata", u"cata"},
                                           BoundaryCase{{"LastLowerLetterAfter"}, u"catz", u"catz"}),
                         NameOf<BoundaryCase>);

TEST_F(ReplaceWordTest, LooksAtTheReplacedTextForTheCharacterBefore)
{
    // The second hit follows the "a" that was put in for the first, so it is no whole word any more.
    EXPECT_EQ(Word(u"--", u"-", u"a"), u"a-");
    EXPECT_EQ(count, 1);
}

TEST_F(ReplaceWordTest, LooksAtWhatAnEmptyReplacementLeftBefore)
{
    EXPECT_EQ(Word(u"7--b-", u"-", u""), u"7-b-");
    EXPECT_EQ(count, 1);
}

TEST_F(ReplaceWordTest, GoesOnAfterAHitInsideAWord)
{
    // From "aaa a" the first hit "aa" is no whole word and is left as a whole.
    EXPECT_EQ(Word(u"aaa aa", u"aa", u"b"), u"aaa b");
    EXPECT_EQ(count, 1);
}

TEST_F(ReplaceWordTest, LeavesTheCountAloneWithoutAReplacement)
{
    EXPECT_EQ(Word(u"catalog", u"cat", u"dog"), u"catalog");
    EXPECT_EQ(count, untouched);
}

TEST_F(ReplaceWordTest, StartsAtThePositionGiven)
{
    EXPECT_EQ(Word(u"a a a", u"a", u"b", 0, 3), u"a b b");
    EXPECT_EQ(Word(u"a a a", u"a", u"b", 0, 0), u"b b b");
    EXPECT_EQ(Word(u"a a a", u"a", u"b", 0, -5), u"b b b");
    EXPECT_EQ(Word(u"a a a", u"a", u"b", 0, 9), u"a a a");
}

TEST_F(ReplaceWordTest, JudgesTheCharacterBeforeTheStartToo)
{
    EXPECT_EQ(Word(u"xcat cat", u"cat", u"dog", 0, 2), u"xcat dog");
}

TEST_F(ReplaceWordTest, StopsAtTheNumberOfReplacementsGiven)
{
    EXPECT_EQ(Word(u"a a a", u"a", u"b", 0, 1, 2), u"b b a");
    EXPECT_EQ(count, 2);
}

TEST_F(ReplaceWordTest, WithALimitOfZeroStopsAtTheFirstPartOfAWord)
{
    EXPECT_EQ(Word(u"ab a a", u"a", u"b", 0, 1, 0), u"ab a a");
    EXPECT_EQ(count, untouched);
}

TEST_F(ReplaceWordTest, WithALimitOfZeroGoesOnAfterAReplacement)
{
    EXPECT_EQ(Word(u"a a a", u"a", u"b", 0, 1, 0), u"b b b");
    EXPECT_EQ(count, 3);
}

TEST_F(ReplaceWordTest, IgnoresCaseOnlyInCompareModeOne)
{
    EXPECT_EQ(Word(u"CAT cat", u"cat", u"dOg", 1), u"dOg dOg");
    EXPECT_EQ(Word(u"CAT cat", u"cat", u"dOg", 0), u"CAT dOg");
}

TEST_F(ReplaceWordTest, CountsEveryWordWhetherACountIsRequiredOrNot)
{
    engine.IsRequiredCount = false;

    EXPECT_EQ(Word(u"a a a", u"a", u"b"), u"b b b");
    EXPECT_EQ(count, 3);
}

TEST_F(ReplaceWordTest, OfAnEmptyFindTextIsLoggedAndGivesAnEmptyText)
{
    EXPECT_EQ(Word(u"cat", u"", u"dog"), u"");

    EXPECT_EQ(count, untouched);
    EXPECT_THAT(Log(), ElementsAre("Error 5 (Invalid procedure call or argument) in procedure ReplaceWord at Line No. "
                                   "0 of Class Module SearchFunctions"));
}

TEST_F(ReplaceWordTest, GivesTheTextReplacedBeforeAFailure)
{
    Deliveries deliveries;
    deliveries.Fail(4711);

    EXPECT_EQ(Word(u"one a, two a", u"a", u"b"), u"one b, two a");

    EXPECT_EQ(count, 1);
    EXPECT_THAT(Log(), ElementsAre("Error 4711 (delivery) in procedure ReplaceWord at Line No. 0 of Class Module "
                                   "SearchFunctions"));
}

TEST_F(ReplaceWordTest, YieldsAfterEveryHit)
{
    engine.mCPUUsage = true;
    Deliveries deliveries;

    Word(u"a ab a", u"a", u"b");

    EXPECT_EQ(deliveries.Count(), 3u);
    EXPECT_EQ(deliveries.AfterASleep(), 3u);
}

TEST_F(ReplaceWordTest, OfAnEmptyTextGivesAnEmptyText)
{
    EXPECT_EQ(Word(u"", u"a", u"b"), u"");
    EXPECT_EQ(count, untouched);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(ReplaceWord1Test, CountsOneWhenNoCountIsRequiredButReplacesAll)
{
    engine.IsRequiredCount = false;

    EXPECT_EQ(All(u"aaa", u"a", u"b"), u"bbb");
    EXPECT_EQ(count, 1);
}

TEST_F(ReplaceWord1Test, CountsEveryHitWhenACountIsRequired)
{
    EXPECT_EQ(All(u"aaa", u"a", u"b"), u"bbb");
    EXPECT_EQ(count, 3);
}

TEST_F(ReplaceWord1Test, StopsAfterAHitAtTheEndOfTheText)
{
    Deliveries deliveries;

    EXPECT_EQ(All(u"xax", u"x", u"y"), u"yay");

    EXPECT_EQ(count, 2);
    EXPECT_EQ(deliveries.Count(), 1u);
}

TEST_F(ReplaceWord1Test, TakesHitsFromTheLeftWithoutOverlap)
{
    EXPECT_EQ(All(u"aaaaa", u"aa", u"b"), u"bba");
    EXPECT_EQ(count, 2);
}

TEST_F(ReplaceWord1Test, DoesNotSearchWhatItPutIn)
{
    EXPECT_EQ(All(u"aa", u"a", u"xaax"), u"xaaxxaax");
    EXPECT_EQ(count, 2);
}

TEST_F(ReplaceWord1Test, OfAnEmptyFindTextGivesAnEmptyText)
{
    EXPECT_EQ(All(u"cat", u"", u"dog"), u"");

    EXPECT_EQ(count, untouched);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(ReplaceWord1Test, LeavesTheCountAloneWithoutAHit)
{
    EXPECT_EQ(All(u"cat", u"x", u"y"), u"cat");
    EXPECT_EQ(count, untouched);
}

TEST_F(ReplaceWord1Test, IgnoresStartAndCount)
{
    EXPECT_EQ(engine.ReplaceWord1(u"a a a", u"a", u"b", 5, 1, 0, count), u"b b b");
    EXPECT_EQ(count, 3);
}

TEST_F(ReplaceWord1Test, IgnoresCaseOnlyInCompareModeOne)
{
    EXPECT_EQ(All(u"CATcat", u"cat", u"dOg", 1), u"dOgdOg");
    EXPECT_EQ(All(u"CATcat", u"cat", u"dOg", 0), u"CATdOg");
}

TEST_F(ReplaceWord1Test, KeepsPositionsWhereFoldingMightChangeLengths)
{
    EXPECT_EQ(All(u"Straße İx CAT", u"cat", u"dog", 1), u"Straße İx dog");
}

TEST_F(ReplaceWord1Test, AFailureGivesAnEmptyTextAndKeepsTheCount)
{
    Deliveries deliveries;
    deliveries.Fail(4711);

    EXPECT_EQ(All(u"a a", u"a", u"b"), u"");

    EXPECT_EQ(count, untouched);
    EXPECT_THAT(Log(), ElementsAre("Error 4711 (delivery) in procedure ReplaceWord1 at Line No. 0 of Class Module "
                                   "SearchFunctions"));
}

TEST_F(ReplaceWord1Test, StaysLinearInALongTextOfHits)
{
    const std::size_t hits = 500'000;
    String source;
    for (std::size_t hit = 0; hit < hits; ++hit)
        source += u"ab ";

    const String result = All(source, u"AB", u"abcdef", 1);

    EXPECT_EQ(result.size(), hits * 7);
    EXPECT_EQ(count, static_cast<std::int32_t>(hits));
}

TEST_F(ReplaceWordTest, StaysLinearInALongTextOfHits)
{
    const std::size_t hits = 500'000;
    String source;
    for (std::size_t hit = 0; hit < hits; ++hit)
        source += u"ab ";

    const String result = Word(source, u"AB", u"abcdef", 1);

    EXPECT_EQ(result.size(), hits * 7);
    EXPECT_EQ(count, static_cast<std::int32_t>(hits));
}

TEST_F(FindandReplaceTest, WithoutAHitGivesTheTextAndMinusOne)
{
    Look({.find = u"x", .with = u"y"});

    EXPECT_EQ(FindandReplace(u"cat"), u"cat");
    EXPECT_EQ(count, -1);
}

TEST_F(FindandReplaceTest, OfAnEmptyTextGivesMinusOneAndAnEmptyText)
{
    Look({.find = u"x", .with = u"y"});

    EXPECT_EQ(FindandReplace(u""), u"");
    EXPECT_EQ(count, -1);
}

TEST_F(FindandReplaceTest, DoesNotSeeChangesOfThePairMeanwhile)
{
    for (const bool matchCase : {false, true}) {
        Look({.find = u"Fabrikam & Sons", .with = u"Contoso & Daughters", .matchCase = matchCase});
        engine.IsRequiredCount = true;
        const auto before = SetDeliverPendingEvents([this] {
            engine.mItem->FindWhat.clear();
            engine.mItem->FindWhat.shrink_to_fit();
            engine.mItem->ReplaceWith = u"something else altogether";
        });

        EXPECT_EQ(FindandReplace(u"Fabrikam & Sons, Fabrikam & Sons"), u"Contoso & Daughters, Contoso & Daughters");

        SetDeliverPendingEvents(before);
    }
}

TEST_F(FindandReplaceTest, IgnoresCaseUnlessThePairMatchesCase)
{
    Look({.find = u"cat", .with = u"Dog"});
    EXPECT_EQ(FindandReplace(u"CAT"), u"Dog");
    EXPECT_EQ(count, 1);

    Look({.find = u"cat", .with = u"Dog", .matchCase = true});
    EXPECT_EQ(FindandReplace(u"CAT"), u"CAT");
    EXPECT_EQ(count, -1);
}

TEST_F(FindandReplaceTest, TakesTheCaseRuleFromThePair)
{
    Look({.find = u"cat", .with = u"dog", .matchCase = true});
    engine.MatchCaseFlag = 0;

    EXPECT_EQ(FindandReplace(u"CAT"), u"CAT");
}

TEST_F(FindandReplaceTest, TakesTheWordRuleFromTheFlag)
{
    Look({.find = u"cat", .with = u"dog", .wholeWord = true});
    engine.WholeWordsFlag = 0;
    EXPECT_EQ(FindandReplace(u"concat"), u"condog");

    engine.WholeWordsFlag = 1;
    EXPECT_EQ(FindandReplace(u"concat"), u"concat");
    EXPECT_EQ(count, -1);
}

TEST_F(FindandReplaceTest, WorksOutTheReplacementInAFindRunToo)
{
    Look({.find = u"cat", .with = u"dog", .findOnly = true});

    EXPECT_EQ(FindandReplace(u"a cat"), u"a dog");
    EXPECT_EQ(count, 1);
}

TEST_F(FindandReplaceTest, PutsTheFindTextItselfWhenNotReplacing)
{
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(FindandReplace(u"a CAT", false), u"a cat");
    EXPECT_EQ(count, 1);
}

TEST_F(FindandReplaceTest, OfAnEmptyFindTextGivesAnEmptyTextAndMinusOne)
{
    Look({.find = u"", .with = u"dog"});
    EXPECT_EQ(FindandReplace(u"cat"), u"");
    EXPECT_EQ(count, -1);

    Look({.find = u"", .with = u"dog", .wholeWord = true});
    EXPECT_EQ(FindandReplace(u"cat"), u"");
    EXPECT_EQ(count, -1);
}

TEST_F(FindandReplaceTest, WithoutItemOrOptionsIsLoggedAndKeepsTheCount)
{
    EXPECT_EQ(engine.FindandReplace(count, nullptr, u"cat", true), u"");
    engine.mItem->OptionSetting.reset();
    EXPECT_EQ(FindandReplace(u"cat"), u"");

    EXPECT_EQ(count, untouched);
    const std::string line =
        "Error 91 (Object variable or With block variable not set) in procedure FindandReplace at Line No. 0 of Class "
        "Module SearchFunctions";
    EXPECT_THAT(Log(), ElementsAre(line, line));
}

}  // namespace

}  // namespace tessarine
