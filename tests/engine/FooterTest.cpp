#include "EngineTest.h"

namespace tessarine
{

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t showsNone = -2147188160;

using FooterTest = EngineTest;

TEST_F(FooterTest, WalksAllSlidesWhenNoneShowsAFooter)
{
    Open({.slides = {FakeSlide{}, FakeSlide{}, FakeSlide{}}});
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.Footer(), 0);

    EXPECT_EQ(script.Count("HeaderFooter.Text"), 3);
    EXPECT_THAT(script.Calls(), IsEmpty());
}

TEST_F(FooterTest, RewritesTheFirstReadableFooterOnly)
{
    Open({.slides = {FakeSlide{}, {.footer = u"cat"}, {.footer = u"cat"}}});
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.Footer(), 0);

    EXPECT_EQ(content().slides[1].footer, u"dog");
    EXPECT_EQ(content().slides[2].footer, u"cat");
}

TEST_F(FooterTest, RewritesTheFirstFooterAlsoWhenNothingIsFound)
{
    Open({.slides = {{.footer = u"none"}, {.footer = u"cat"}}});
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.Footer(), 0);

    EXPECT_THAT(script.Calls(), ElementsAre("HeaderFooter.Text = none"));
}

TEST_F(FooterTest, AFindRunCountsNothing)
{
    Open({.slides = {FakeSlide{}, {.footer = u"cat"}, {.footer = u"cat"}}});
    Look({.find = u"cat", .with = u"dog", .findOnly = true});

    EXPECT_EQ(engine.Footer(), 0);

    EXPECT_EQ(script.Count("HeaderFooter.Text"), 2);
    EXPECT_THAT(script.Calls(), IsEmpty());
}

TEST_F(FooterTest, CountsAFooterThatIsGoneWhenWritten)
{
    Open({.slides = {{.footer = u"cat cat"}}});
    Look({.find = u"cat", .with = u"dog"});
    script.Fail("HeaderFooter.Text =", showsNone);

    EXPECT_EQ(engine.Footer(), 2);
}

TEST_F(FooterTest, RepeatsTheCountOnALaterSlideWithoutAFooter)
{
    Open({.slides = {{.footer = u"cat cat"}, FakeSlide{}, FakeSlide{}}});
    Look({.find = u"cat", .with = u"dog"});
    script.Fail("HeaderFooter.Text =", showsNone);

    EXPECT_EQ(engine.Footer(), 6);
}

TEST_F(FooterTest, AddsNothingForAFooterGoneWhenWrittenWithoutAHit)
{
    Open({.slides = {{.footer = u"none"}, FakeSlide{}}});
    Look({.find = u"cat", .with = u"dog"});
    script.Fail("HeaderFooter.Text =", showsNone);

    EXPECT_EQ(engine.Footer(), 0);
}

TEST_F(FooterTest, EndsWithZeroAtAnyOtherFailureOfTheText)
{
    Open({.slides = {FakeSlide{}, {.footer = u"cat"}, {.footer = u"cat"}}});
    Look({.find = u"cat", .with = u"dog"});
    script.FailOnce("HeaderFooter.Text", 4711, u"gone", 2);

    EXPECT_EQ(engine.Footer(), 0);

    EXPECT_EQ(script.Count("HeaderFooter.Text"), 2);
    EXPECT_THAT(script.Calls(), IsEmpty());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(FooterTest, ForgetsTheTotalAtAnyOtherFailure)
{
    Open({.slides = {{.footer = u"cat"}, {.footer = u"cat"}}});
    Look({.find = u"cat", .with = u"dog"});
    script.FailOnce("HeaderFooter.Text =", showsNone);

    EXPECT_EQ(engine.Footer(), 0);

    EXPECT_EQ(content().slides[1].footer, u"dog");
}

TEST_F(FooterTest, AFooterObjectFailingOnTheFirstSlideIsRaised)
{
    Open({.slides = {FakeSlide{}, FakeSlide{}}});
    script.FailOnce("HeadersFooters.Footer", showsNone, u"none");

    const Failure failure = FailureOf([&] { engine.Footer(); });

    EXPECT_EQ(failure.number, showsNone);
    EXPECT_EQ(failure.source, u"Footer");
}

TEST_F(FooterTest, AFooterObjectFailingOnALaterSlideEndsWithZero)
{
    Open({.slides = {FakeSlide{}, {.footer = u"cat"}, {.footer = u"cat"}}});
    Look({.find = u"cat", .with = u"dog"});
    script.FailOnce("Slide.HeadersFooters", showsNone, u"none", 2);

    // The failure is passed over, and the text is then asked of nothing: number 91 ends the walk.
    EXPECT_EQ(engine.Footer(), 0);

    EXPECT_EQ(content().slides[1].footer, u"cat");
    EXPECT_EQ(content().slides[2].footer, u"cat");
}

TEST_F(FooterTest, DeliversEventsForEachSlideWithoutAFooter)
{
    Open({.slides = std::vector<FakeSlide>(30)});
    engine.mCPUUsage = true;
    Deliveries deliveries;

    engine.Footer();

    EXPECT_EQ(deliveries.Count(), 30u);
    EXPECT_EQ(deliveries.AfterASleep(), 0u);
}

TEST_F(FooterTest, PassesOverFailuresBetweenSlides)
{
    Open({.slides = {FakeSlide{}, FakeSlide{}, FakeSlide{}}});
    Deliveries deliveries;
    deliveries.Fail(4711);
    script.FailOnce("Slides.Next", 4712, u"gone", 3);

    EXPECT_EQ(engine.Footer(), 0);

    EXPECT_EQ(deliveries.Count(), 2u);
}

}  // namespace

}  // namespace tessarine
