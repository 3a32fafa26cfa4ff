#include <QApplication>
#include <QTimer>

#include "ui/main/FailingPowerPointTest.h"
#include "ui/run/frmIntervention.h"

// The window that asks for a manual intervention. No run raises the event that shows it, so these tests do, in the
// middle of a run from the main window.

namespace tessarine
{
namespace
{

using testing::ElementsAreArray;
using testing::IsEmpty;

class InterventionInRun : public FailingPowerPointTest
{
protected:
    InterventionInRun()
    {
        SetJobOver({u"a.pptx", u"b.pptx", u"c.pptx"});
        expectedWindows.insert("frmIntervention");
    }

    /// Runs a replacement that asks for an intervention at the open of its second file. `treat` is what the person then
    /// does; the run goes on when the window has closed.
    void ReplaceWithIntervention(const std::function<void(frmIntervention&)>& treat)
    {
        bool wasTreated = false;
        office.script.On("Presentations.Open", [&] {
            if (office.script.Count("Presentations.Open") != 2)
                return;
            QTimer::singleShot(0, [&] {
                auto* const window = Shown();
                ASSERT_NE(window, nullptr);
                callsBefore_ = Calls();
                treat(*window);
                wasTreated = true;
                EXPECT_FALSE(window->isVisible());
                window->close();
            });
            CurrentProject->ManualInterventionRequired.Raise();
            EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        });

        Replace();

        EXPECT_TRUE(wasTreated);
    }

    static frmIntervention* Shown() { return qobject_cast<frmIntervention*>(QApplication::activeModalWidget()); }

    void Press(frmIntervention& window, const char* button)
    {
        auto* const control = window.findChild<QWidget*>(button);
        ASSERT_NE(control, nullptr);
        ASSERT_TRUE(control->isVisible() && control->isEnabled());
        QTest::mouseClick(control, Qt::LeftButton);
    }

    void ExpectWholeRun()
    {
        EXPECT_THAT(Changed(), ElementsAreArray(NodesOf({"a.pptx", "b.pptx", "c.pptx"})));
        EXPECT_TRUE(IsChanged(u"a.pptx") && IsChanged(u"b.pptx") && IsChanged(u"c.pptx"));
        EXPECT_EQ(CallsOf("CreateApplication"), 1U);
        EXPECT_THAT(Log(), IsEmpty());
        ExpectFinished("Finished: 3 of 3 file(s) changed");
    }

    std::vector<std::string> callsBefore_;  // to PowerPoint, when the window came up
};

TEST_F(InterventionInRun, StopsTheRunUntilOkIsClicked)
{
    ReplaceWithIntervention([this](frmIntervention& window) {
        EXPECT_TRUE(window.isModal());
        EXPECT_EQ(window.parentWidget(), &Window());
        EXPECT_EQ(Label("lblDocChanged"), "File 2 of 3: b.pptx");
        Press(window, "cmdOk");
    });

    ExpectWholeRun();
    ExpectNextRunToWork();
}

TEST_F(InterventionInRun, StaysAndRestartsNothingWhenARestartIsAskedFor)
{
    ReplaceWithIntervention([this](frmIntervention& window) {
        Press(window, "cmdRestart");
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(Calls(), callsBefore_);
        Press(window, "cmdOk");
    });

    ExpectWholeRun();
}

TEST_F(InterventionInRun, EndsWithTheEscapeKeyToo)
{
    ReplaceWithIntervention([](frmIntervention& window) { QTest::keyClick(&window, Qt::Key_Escape); });

    ExpectWholeRun();
}

TEST_F(InterventionInRun, DoesNotGoAwayByItselfWhileTheTimeTicksOn)
{
    ReplaceWithIntervention([this](frmIntervention& window) {
        const auto ticks = std::make_shared<int>(0);
        Processing().tmrelapsedSecsX->Timer += [ticks] { ++*ticks; };
        office.StartByUser();
        // A tick may have delivered what runs here, and no other comes before it is over: the timer starts anew.
        Processing().tmrelapsedSecsX->PutEnabled(false);
        Processing().tmrelapsedSecsX->PutEnabled(true);

        EXPECT_TRUE(QTest::qWaitFor([&] { return *ticks >= 5; }));

        // In spite of its last line. Intended: nothing watches over PowerPoint, so that nothing can clear the window.
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(Calls(), callsBefore_);
        Press(window, "cmdOk");
    });

    ExpectWholeRun();
}

TEST_F(InterventionInRun, LeavesACancelThatWasClickedBeforeItInForce)
{
    bool wasClicked = false;
    atDelivery = [&] {
        if (wasClicked || frmProcessingDocuments::Loaded() == nullptr ||
            Label("lblDocChanged") != "File 1 of 3: a.pptx")
            return;
        wasClicked = true;
        ClickInProcessing("cmdOK");
    };
    office.script.On("Presentation.Close", [this] {
        QTimer::singleShot(0, [this] { Press(*Shown(), "cmdOk"); });
        CurrentProject->ManualInterventionRequired.Raise();
    });

    Replace();

    EXPECT_TRUE(IsChanged(u"a.pptx"));
    EXPECT_THAT(TextsOf(u"b.pptx"), testing::ElementsAre("Fabrikam"));
    EXPECT_EQ(Label("lblDocChanged"), "File 2 of 3: b.pptx");
    EXPECT_TRUE(Processing().IsComplited);
}

}  // namespace
}  // namespace tessarine
