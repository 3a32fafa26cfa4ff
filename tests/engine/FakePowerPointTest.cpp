#include "support/FakePowerPoint.h"

#include "EngineTest.h"
#include "log/Treatments.h"

namespace tessarine
{

namespace
{

using ::testing::ElementsAre;

TEST(FakeTextRange, SearchesFromTheCharacterThatFollowsAfter)
{
    const auto range = FakeTextRangeOver(std::make_shared<String>(u"cat cat"));

    EXPECT_EQ(range->Find(u"cat", 0, 0, 0)->Start(), 1);
    EXPECT_EQ(range->Find(u"cat", 1, 0, 0)->Start(), 5);
    EXPECT_EQ(range->Find(u"cat", 4, 0, 0)->Start(), 5);
    EXPECT_EQ(range->Find(u"cat", 5, 0, 0), nullptr);
    EXPECT_EQ(range->Find(u"", 0, 0, 0), nullptr);
}

TEST(FakeTextRange, FollowsTheFlags)
{
    const auto range = FakeTextRangeOver(std::make_shared<String>(u"CAT concat cat"));

    EXPECT_EQ(range->Find(u"cat", 0, 1, 0)->Start(), 8);
    EXPECT_EQ(range->Find(u"cat", 1, 0, 1)->Start(), 12);
    EXPECT_EQ(range->Find(u"cat", 0, 1, 1)->Start(), 12);
}

TEST(FakePowerPoint, OpensWhatWasPutAndWritesTheCallsDown)
{
    FakePowerPoint powerPoint;
    powerPoint.Put(u"a.pptx", FakeDeck());
    const auto application = powerPoint.Provider()->CreateApplication();

    application->Presentations()->Open(u"a.pptx", 0, 0, 0)->Save();
    application->Quit();

    EXPECT_THAT(powerPoint.script.Calls(), ElementsAre("CreateApplication", "Presentations.Open a.pptx",
                                                       "Presentation.Save a.pptx", "Application.Quit"));
    EXPECT_EQ(powerPoint.Running(), 0);
}

TEST(FakePowerPoint, FailsToOpenAsOftenAsItIsTold)
{
    FakePowerPoint powerPoint;
    powerPoint.Put(u"a.pptx", FakeDeck());
    powerPoint.FailOpen(u"a.pptx", 462, u"gone", 2);
    const auto presentations = powerPoint.Provider()->CreateApplication()->Presentations();
    const auto open = [&](const String& path) { return Skip([&] { presentations->Open(path, 0, 0, 0); }); };

    EXPECT_EQ(open(u"a.pptx"), 462);
    EXPECT_EQ(open(u"a.pptx"), 462);
    EXPECT_EQ(open(u"a.pptx"), 0);
    EXPECT_EQ(open(u"b.pptx"), -2147024894);
}

TEST(FakePowerPoint, GivesARunningInstanceUntilItIsQuit)
{
    FakePowerPoint powerPoint;
    EXPECT_EQ(powerPoint.Provider()->AttachToRunning(), nullptr);

    powerPoint.StartByUser();
    powerPoint.Provider()->AttachToRunning()->Quit();

    EXPECT_EQ(powerPoint.Provider()->AttachToRunning(), nullptr);
}

}  // namespace

}  // namespace tessarine
