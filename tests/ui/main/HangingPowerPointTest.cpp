#include <QElapsedTimer>
#include <QLabel>
#include <QTabWidget>

#include "ui/main/FailingPowerPointTest.h"

// A PowerPoint that does not come back from a call of a run from the main window: nothing watches over it, the run
// waits, and its window lives on where the waiting delivers events.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::StartsWith;

class HangingPowerPoint : public FailingPowerPointTest
{
protected:
    HangingPowerPoint() { SetJobOver({u"a.pptx", u"b.pptx", u"c.pptx"}); }

    /// The second call of a member delivers events until `isOver`, as a call to another process does while it waits.
    void HangAt(const std::string& member, std::function<bool()> isOver)
    {
        office.script.On(member, [this, member, isOver = std::move(isOver)] {
            if (hasHung_ || office.script.Count(member) != 2)
                return;
            hasHung_ = true;
            EXPECT_TRUE(QTest::qWaitFor(isOver, patience)) << "the window of the run does not live";
        });
    }

    /// True from the third tick of the elapsed time on, counted from the first call of it.
    std::function<bool()> AfterTicks()
    {
        return [this, ticks = std::shared_ptr<int>()]() mutable {
            if (!ticks) {
                ticks = std::make_shared<int>(0);
                InProcessing<QLabel>("lblelapsedSecs").setText("not refreshed");
                Processing().tmrelapsedSecsX->Timer += [ticks] { ++*ticks; };
            }
            return *ticks >= 3;
        };
    }

    static constexpr int patience = 30'000;  // milliseconds
    bool hasHung_ = false;
};

class HangingAt : public HangingPowerPoint, public testing::WithParamInterface<const char*>
{
};

TEST_P(HangingAt, IsWaitedForWhileTheTimeTicks)
{
    HangAt(GetParam(), AfterTicks());

    Replace();

    EXPECT_TRUE(hasHung_);
    EXPECT_THAT(Label("lblelapsedSecs"), StartsWith("Total Elapsed Time : "));
    EXPECT_EQ(CallsOf("CreateApplication"), 1U);
    EXPECT_EQ(CallsOf("Application.Quit"), 1U);
    EXPECT_THAT(Changed(), ElementsAreArray(NodesOf({"a.pptx", "b.pptx", "c.pptx"})));
    EXPECT_EQ(NotOpened(), "");
    EXPECT_THAT(Log(), IsEmpty());
    ExpectFinished("Finished: 3 of 3 file(s) changed");
    ExpectNextRunToWork();
}

INSTANTIATE_TEST_SUITE_P(Calls, HangingAt,
                         testing::Values("Presentations.Open", "Shape.Type", "TextRange.Replace", "Presentation.Save",
                                         "Presentation.Close"),
                         [](const auto& parameter) {
                             std::string name = parameter.param;
                             std::erase(name, '.');
                             return name;
                         });

TEST_F(HangingPowerPoint, IsNotRestartedAfterTheSecondsThatWereTyped)
{
    ShowTab(2);
    QTest::keyClick(&The("lstRestartAfterSecond"), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&The("lstRestartAfterSecond"), "1");
    QElapsedTimer sinceStart;
    sinceStart.start();
    HangAt("Presentations.Open", [&sinceStart] { return sinceStart.hasExpired(1200); });

    Replace();

    EXPECT_TRUE(hasHung_);
    EXPECT_EQ(Options().RestartApplicationAfterSeconds, 1);
    EXPECT_EQ(CallsOf("CreateApplication"), 1U);
    ExpectFinished("Finished: 3 of 3 file(s) changed");
}

TEST_F(HangingPowerPoint, LetsTheRunBeCancelledAfterThatFile)
{
    HangAt("Shape.Type", [this] {
        ClickInProcessing("cmdOK");
        return CurrentProject->IsProcessCancel;
    });

    Replace();

    EXPECT_TRUE(IsChanged(u"a.pptx") && IsChanged(u"b.pptx")) << "the file in progress is finished";
    EXPECT_THAT(TextsOf(u"c.pptx"), ElementsAre("Fabrikam"));
    EXPECT_EQ(Label("lblDocChanged"), "File 3 of 3: c.pptx") << "begun, and left at once";
    EXPECT_TRUE(Processing().IsComplited);
    EXPECT_EQ(Caption("cmdOK"), "OK");
    EXPECT_EQ(office.Running(), 0);
    ExpectNextRunToWork();
}

TEST_F(HangingPowerPoint, LeavesTheTabsOfTheRunsWindowToTheUser)
{
    auto tree = std::make_shared<std::vector<std::string>>();
    HangAt("Presentations.Open", [this, tree] {
        auto& tabs = InProcessing<QTabWidget>("SSTab1");
        QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, tabs.tabBar()->tabRect(1).center());
        *tree = Changed();
        return InProcessing("trvChangedFiles").isVisible();
    });

    Replace();

    EXPECT_THAT(*tree, ElementsAreArray(NodesOf({"a.pptx"}))) << "what the run has done so far";
    EXPECT_EQ(InProcessing<QTabWidget>("SSTab1").currentIndex(), 1) << "and stays there";
}

TEST_F(HangingPowerPoint, LetsNoSecondRunBegin)
{
    HangAt("Presentations.Open", [this] {
        Click("cmdStartReplacing(0)");
        Click("cmdStartReplacing(1)");
        return true;
    });

    Replace();

    EXPECT_EQ(messages.Messages().size(), 1U) << "the question was asked once";
    EXPECT_EQ(CallsOf("CreateApplication"), 1U);
    ExpectFinished("Finished: 3 of 3 file(s) changed");
}

TEST_F(HangingPowerPoint, ThatDiesInTheEndIsReplaced)
{
    HangAt("Presentations.Open", AfterTicks());
    office.DieAt("Presentations.Open", 2);

    Replace();

    EXPECT_TRUE(hasHung_);
    EXPECT_EQ(CallsOf("CreateApplication"), 2U);
    EXPECT_THAT(Changed(), ElementsAreArray(NodesOf({"a.pptx", "b.pptx", "c.pptx"})));
    EXPECT_THAT(Log(), IsEmpty());
    ExpectFinished("Finished: 3 of 3 file(s) changed");
}

}  // namespace
}  // namespace tessarine
