#include "EngineTest.h"

namespace tessarine
{

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using SlideLocationsTest = EngineTest;
using HyperlinksTest = EngineTest;

TEST_F(SlideLocationsTest, SlidesCountsTheTitleAndShapesTheTextBox)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat"), TextBox(u"cat cat")}}}});
    Look({.find = u"cat", .findOnly = true});

    EXPECT_EQ(engine.Slides(), 1);
    EXPECT_EQ(engine.ShapeAndTextboxes(), 2);
}

TEST_F(SlideLocationsTest, APlaceholderOnANotesPageCountsInNotesOnly)
{
    Open({.slides = {{.notes = {Placeholder(u"cat")}}}});
    Look({.find = u"cat", .findOnly = true});

    EXPECT_EQ(engine.Slides(), 0);
    EXPECT_EQ(engine.ShapeAndTextboxes(), 0);
    EXPECT_EQ(engine.Notes(), 1);
}

TEST_F(SlideLocationsTest, WalkAllSlidesInTheirOrder)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat")}, .notes = {TextBox(u"cat")}},
                     {.shapes = {AutoShape(u"cat")}},
                     {.shapes = {Placeholder(u"cat cat")}, .notes = {Placeholder(u"cat")}}}});
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.Slides(), 3);
    EXPECT_EQ(engine.ShapeAndTextboxes(), 1);
    EXPECT_EQ(engine.Notes(), 2);
    EXPECT_EQ(content().slides[2].shapes[0].text, u"dog dog");
}

TEST_F(SlideLocationsTest, AnEmptyPresentationGivesZeroInEach)
{
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.Slides(), 0);
    EXPECT_EQ(engine.Hyperlinks(), 0);
    EXPECT_EQ(engine.ShapeAndTextboxes(), 0);
    EXPECT_EQ(engine.Header(), 0);
    EXPECT_EQ(engine.Footer(), 0);
    EXPECT_EQ(engine.Notes(), 0);
    EXPECT_THAT(script.Calls(), IsEmpty());
}

TEST_F(SlideLocationsTest, OnlySomeLocationsClearTheScratchCounter)
{
    const auto counterAfter = [this](std::int32_t (SearchFunctions::*location)()) {
        engine.mCounter = 5;
        (engine.*location)();
        return engine.mCounter;
    };

    EXPECT_EQ(counterAfter(&SearchFunctions::Slides), 0);
    EXPECT_EQ(counterAfter(&SearchFunctions::Hyperlinks), 0);
    EXPECT_EQ(counterAfter(&SearchFunctions::SlidesMasterPerSlide), 0);
    EXPECT_EQ(counterAfter(&SearchFunctions::SlidesMasterPerPresentation), 0);
    EXPECT_EQ(counterAfter(&SearchFunctions::ShapeAndTextboxes), 5);
    EXPECT_EQ(counterAfter(&SearchFunctions::Notes), 5);
}

TEST_F(SlideLocationsTest, HeaderTouchesNothing)
{
    engine.xPresentation.reset();

    EXPECT_EQ(engine.Header(), 0);
}

TEST_F(HyperlinksTest, AFindRunCountsAndWritesNothing)
{
    Open({.slides = {{.hyperlinks = {u"http://cat/cat", u"http://x"}}, {.hyperlinks = {u"cat"}}}});
    Look({.find = u"cat", .with = u"dog", .findOnly = true});

    EXPECT_EQ(engine.Hyperlinks(), 3);
    EXPECT_THAT(script.Calls(), IsEmpty());
}

TEST_F(HyperlinksTest, AReplaceRunWritesEveryAddressBackFoundOrNot)
{
    Open({.slides = {{.hyperlinks = {u"http://cat", u"http://x"}}}});
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.Hyperlinks(), 1);
    EXPECT_THAT(script.Calls(), ElementsAre("Hyperlink.Address = http://dog", "Hyperlink.Address = http://x"));
    EXPECT_EQ(engine.mCounter, -1);
}

TEST_F(HyperlinksTest, FollowTheRuleOfWholeWordsForPlainText)
{
    Open({.slides = {{.hyperlinks = {u"http://cat7/concat"}}}});
    Look({.find = u"cat", .with = u"dog", .wholeWord = true});

    EXPECT_EQ(engine.Hyperlinks(), 1);
    EXPECT_EQ(content().slides[0].hyperlinks[0], u"http://dog7/concat");
}

TEST_F(HyperlinksTest, CountOnePerAddressWhenNoCountIsRequired)
{
    Open({.slides = {{.hyperlinks = {u"cat cat", u"cat cat"}}}});
    Look({.find = u"cat", .with = u"dog", .countAll = false});

    EXPECT_EQ(engine.Hyperlinks(), 2);
    EXPECT_EQ(content().slides[0].hyperlinks[0], u"dog dog");
}

TEST_F(HyperlinksTest, AFailingMatcherWritesAnEmptyAddress)
{
    Open({.slides = {{.hyperlinks = {u"cat", u"cat cat"}}}});
    Look({.find = u"cat", .with = u"dog"});
    int deliveries = 0;
    const auto before = SetDeliverPendingEvents([&] {
        // The first is Hyperlinks' own step; the second comes inside the matcher, between the two hits.
        if (++deliveries == 2)
            throw Failure(4711, u"delivery");
    });

    const std::int32_t total = engine.Hyperlinks();
    SetDeliverPendingEvents(before);

    EXPECT_EQ(total, 1);
    EXPECT_EQ(content().slides[0].hyperlinks[1], u"");
}

TEST_F(HyperlinksTest, YieldAfterEachOne)
{
    Open({.slides = {{.hyperlinks = {u"a", u"b"}}, {.hyperlinks = {u"c"}}}});
    Look({.find = u"cat", .findOnly = true});
    engine.mCPUUsage = true;
    Deliveries deliveries;

    engine.Hyperlinks();

    EXPECT_EQ(deliveries.Count(), 3u);
    EXPECT_EQ(deliveries.AfterASleep(), 3u);
}

}  // namespace

}  // namespace tessarine
