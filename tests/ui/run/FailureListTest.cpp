#include <QAction>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QTabWidget>
#include <QTreeWidget>

#include "i18n/QtText.h"
#include "platform/GivingUp.h"
#include "platform/PathSeparator.h"
#include "ui/run/FileProgressBar.h"
#include "ui/run/ProcessingWindowTest.h"

// The list of failures, and what the window says when a run begins and ends.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class FailureListTest : public ProcessingWindowTest
{
protected:
    QTreeWidget& List() { return The<QTreeWidget>("lstFailures"); }

    /// The lines in sight.
    std::vector<std::string> Lines()
    {
        std::vector<std::string> lines;
        for (int at = 0; at < List().topLevelItemCount(); ++at) {
            const QTreeWidgetItem& line = *List().topLevelItem(at);
            if (!line.isHidden())
                lines.push_back((line.text(0) + ": " + line.text(1)).toStdString());
        }
        return lines;
    }

    void ClickLine(int at)
    {
        const QPoint point = List().visualItemRect(List().topLevelItem(at)).center();
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, point);
    }
};

TEST_F(FailureListTest, ShowsEachFailureWithItsReasonAndWithoutItsPathTwice)
{
    BeginRun();

    Window().FileNotOpened(u"/decks/a.pptx", Failure(70, u"Can't open \"/decks/a.pptx\": Permission denied"));
    Window().FileNotProcessed(u"/decks/b.pptx", Failure(FailureNumber::SystemDiskFull, u"The disk is full"));
    Window().ListFailure(u"/decks/c.pptx", u"  Wrong Password has been supplied.");

    EXPECT_THAT(Lines(),
                ElementsAre("/decks/a.pptx: Can't open it: Permission denied", "/decks/b.pptx: The disk is full",
                            "/decks/c.pptx: Wrong Password has been supplied."));
    EXPECT_EQ(Text("lblFailures"), "Failures: 3");
    EXPECT_EQ(Text("lblNotOpened"), "1 file(s) could not be opened. The error log names them.");
    EXPECT_EQ(Text("lblNotProcessed"), "1 file(s) could not be processed or saved. The error log names them.");
    ShowTab(3);
    EXPECT_TRUE(IsVisible("lstFailures"));
}

TEST_F(FailureListTest, IsOutOfSightUntilThereIsAFailure)
{
    BeginRun();
    EXPECT_FALSE(IsVisible("cmdFailures"));

    ShowTab(3);

    EXPECT_FALSE(IsVisible("lstFailures"));
    EXPECT_TRUE(IsVisible("trvErrors"));
}

TEST_F(FailureListTest, ComesToTheFrontWithItsButton)
{
    BeginRun();
    Window().ListFailure(u"/a.pptx", u"Read Only File.");

    Click("cmdFailures");

    EXPECT_EQ(The<QTabWidget>("SSTab1").currentIndex(), 3);
    EXPECT_EQ(QApplication::focusWidget(), &List());
}

TEST_F(FailureListTest, OpensAFileByDoubleClickAndByEnterAndItsFolderByTheMenu)
{
    const String path = folder_.Write(u"a.pptx");
    Window().ListFailure(path, u"Read Only File.");
    ShowTab(3);
    ClickLine(0);

    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, List().visualItemRect(List().topLevelItem(0)).center());
    QTest::keyClick(&List(), Qt::Key_Return);
    List().findChild<QAction*>("mnuOpenFolder")->trigger();

    EXPECT_THAT(shell_.Opened(), ElementsAre(path, path, folder_.Path() + PathSeparator));
}

TEST_F(FailureListTest, OpensNothingForTheFailureOfTheRun)
{
    Window().ListFailure(u"", u"PowerPoint went away");
    ShowTab(3);
    ClickLine(0);

    QTest::keyClick(&List(), Qt::Key_Return);
    List().findChild<QAction*>("mnuOpenFolder")->trigger();

    EXPECT_THAT(shell_.Opened(), IsEmpty());
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(FailureListTest, CopiesALine)
{
    Window().ListFailure(u"/decks/a.pptx", u"Read Only File.");
    ShowTab(3);
    ClickLine(0);

    QTest::keyClick(&List(), Qt::Key_C, Qt::ControlModifier);

    EXPECT_EQ(QGuiApplication::clipboard()->text(), "/decks/a.pptx\tRead Only File.");
}

TEST_F(FailureListTest, ShowsTheNodeOfTheFileThatIsChosen)
{
    for (const char16_t* path : {u"/a.pptx", u"/b.pptx", u"/c.pptx"}) {
        Add(NotProcessed(path, u"Read Only File."));
        Window().ListFailure(path, u"Read Only File.");
    }
    ShowTab(3);

    ClickLine(1);

    ASSERT_TRUE(Window().trvErrors->CurrentNode());
    EXPECT_EQ(Window().trvErrors->CurrentNode()->Key, u"/b.pptx");
}

TEST_F(FailureListTest, ObeysTheFilterOfTheTrees)
{
    Window().ListFailure(u"/decks/offer.pptx", u"Read Only File.");
    Window().ListFailure(u"/decks/plan.pptx", u"Read Only File.");
    ShowTab(3);

    QTest::keyClicks(&The<QLineEdit>("txtFilter(2)"), "OFFER");
    EXPECT_THAT(Lines(), ElementsAre("/decks/offer.pptx: Read Only File."));

    Window().ListFailure(u"/decks/third.pptx", u"Read Only File.");
    EXPECT_THAT(Lines(), ElementsAre("/decks/offer.pptx: Read Only File."));
}

TEST_F(FailureListTest, CountsBesideTheTabWhatTheTreeDoesNotShow)
{
    BeginRun();
    Window().FileNotOpened(u"/a.pptx", Failure(70, u"Permission denied"));
    Window().FileNotOpened(u"/b.pptx", Failure(70, u"Permission denied"));

    auto& bar = *The<QTabWidget>("SSTab1").tabBar();
    const auto* const count = qobject_cast<QLabel*>(bar.tabButton(3, QTabBar::RightSide));
    EXPECT_TRUE(QTest::qWaitFor([count] { return count->text() == "(2)"; }));
}

TEST_F(FailureListTest, IsCountedAboveTheListAsFarAsTheFilterShowsIt)
{
    BeginRun();
    Window().ListFailure(u"/decks/offer.pptx", u"Read Only File.");
    Window().ListFailure(u"/decks/plan.pptx", u"Read Only File.");
    ShowTab(3);
    const auto& total = *The("txtFilter(2)").parentWidget()->findChild<QLabel*>();
    EXPECT_TRUE(QTest::qWaitFor([&total] { return total.text() == "Files: 2"; }));

    QTest::keyClicks(&The<QLineEdit>("txtFilter(2)"), "offer");

    EXPECT_EQ(total.text(), "Files: 1 of 2");
}

TEST_F(FailureListTest, HasTheRoomOfTheTreeWhileThatIsEmpty)
{
    Window().ListFailure(u"/a.pptx", u"Read Only File.");
    ShowTab(3);
    EXPECT_FALSE(IsVisible("trvErrors"));

    Add(NotProcessed(u"/b.pptx", u"Read Only File."));

    EXPECT_TRUE(IsVisible("trvErrors"));
    EXPECT_TRUE(IsVisible("lstFailures"));
}

TEST_F(FailureListTest, ShowsReasonsWholeAtTheCostOfThePaths)
{
    Window().resize(900, 500);
    ShowTab(3);
    Window().ListFailure(u"/decks/of/a/long/path/a.pptx", u"Gone.");
    const int least = List().columnWidth(0);
    // Two thirds of the width, whatever the font: more than it has at first, less than it may get.
    QString reason = "reason";
    while (List().fontMetrics().horizontalAdvance(reason) < List().viewport()->width() * 2 / 3)
        reason += " x";
    Window().ListFailure(u"/b.pptx", FromQt(reason));

    EXPECT_LT(List().columnWidth(0), least);
    EXPECT_GT(List().columnWidth(1), List().fontMetrics().horizontalAdvance(reason));

    Window().ListFailure(u"/c.pptx", FromQt(reason.repeated(20)));
    EXPECT_EQ(List().columnWidth(0), List().viewport()->width() / 4);
}

TEST_F(FailureListTest, IsEmptyForAnotherRun)
{
    Window().FileNotProcessed(u"/a.pptx", Failure(70, u"Permission denied"));

    Window().ShowBeginning();

    EXPECT_THAT(Lines(), IsEmpty());
    ShowTab(0);
    EXPECT_FALSE(IsVisible("panelFailures"));
}

// How a run begins and ends.

using BeginningAndEnd = FailureListTest;

TEST_F(BeginningAndEnd, TheOutcomeTakesThePlaceOfTheWarning)
{
    BeginRun();
    EXPECT_TRUE(IsVisible("lblWarning"));
    EXPECT_FALSE(IsVisible("lblOutcome"));
    EndRun();

    Window().ShowEnd(u"Done. Files: 5.");

    EXPECT_FALSE(IsVisible("lblWarning"));
    EXPECT_TRUE(IsVisible("lblOutcome"));
    EXPECT_EQ(Text("lblOutcome"), "Done. Files: 5.");
    EXPECT_FALSE(IsVisible("cmdClose")) << "OK closes the window";

    Window().ShowBeginning();
    EXPECT_TRUE(IsVisible("lblWarning"));
    EXPECT_FALSE(IsVisible("lblOutcome"));
}

TEST_F(BeginningAndEnd, ARunThatHasLeftOKToItsCancelIsClosedByAButtonOfItsOwn)
{
    BeginRun();
    Window().IsRunGoing = false;

    Window().ShowEnd(u"Ended by a failure after 2 of 5 file(s).");
    Click("cmdClose");

    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
}

TEST_F(BeginningAndEnd, TheElapsedTimeStartsAnewWithEachRun)
{
    BeginRun();
    now_ = now_.addSecs(100);
    Window().tmrelapsedSecsX->PutEnabled(false);

    Window().ShowBeginning();
    EXPECT_EQ(Text("lblelapsedSecs"), "Total Elapsed Time : 00:00:00");

    now_ = now_.addSecs(7);
    Tick();
    EXPECT_EQ(Text("lblelapsedSecs"), "Total Elapsed Time : 00:00:07");
}

TEST_F(BeginningAndEnd, ARunIntoAWindowWithResultsSaysThatItAddsToThem)
{
    Window().ShowBeginning();
    ShowTab(0);
    EXPECT_FALSE(IsVisible("lblAdded"));
    Add(NothingCounted(u"/a.pptx"));

    Window().ShowBeginning();

    EXPECT_TRUE(IsVisible("lblAdded"));
    EXPECT_EQ(Text("lblAdded"), "The results of this run are added to those that are already here.");
}

TEST_F(BeginningAndEnd, TheBarIsDrawnWhereTheRunHasStopped)
{
    FileProgressBar bar;
    FileProgressBar expected;
    for (FileProgressBar* each : {&bar, &expected}) {
        each->resize(300, 30);
        each->Begin(5);
    }
    expected.setValue(3);

    bar.Fill();
    bar.StopAt(3);

    EXPECT_EQ(bar.value(), 5);
    EXPECT_EQ(bar.text(), "60%");
    EXPECT_EQ(bar.grab().toImage(), expected.grab().toImage());

    bar.Begin(5);
    expected.Begin(5);
    EXPECT_EQ(bar.grab().toImage(), expected.grab().toImage());
}

// A file that takes long.

using LongFile = FailureListTest;

TEST_F(LongFile, IsToldAfterTenSecondsWithItsTimeAndItsPair)
{
    BeginRun();
    Window().ShowFileBegins();
    Window().TellPair(3, u"slide");
    now_ = now_.addSecs(9);
    Tick();
    EXPECT_FALSE(IsVisible("cmdGiveUp"));

    now_ = now_.addSecs(1);
    Tick();

    EXPECT_TRUE(IsVisible("cmdGiveUp"));
    EXPECT_EQ(Text("lblStuck"), "This file has taken 00:00:10 so far. Now at pair 3: “slide”.");

    Window().ShowFileBegins();
    EXPECT_FALSE(IsVisible("cmdGiveUp"));
}

TEST_F(LongFile, IsTimedAcrossMidnight)
{
    BeginRun();
    now_ = QTime(23, 59, 50);
    Window().ShowFileBegins();

    now_ = QTime(0, 0, 5);
    Tick();

    EXPECT_EQ(Text("lblStuck"), "This file has taken 00:00:15 so far.");
}

TEST_F(LongFile, IsGivenUpByItsButtonOnce)
{
    BeginRun();
    Window().ShowFileBegins();
    now_ = now_.addSecs(10);
    Tick();
    EXPECT_FALSE(IsFileGivenUp());

    Click("cmdGiveUp");

    EXPECT_TRUE(IsFileGivenUp());
    EXPECT_FALSE(The("cmdGiveUp").isEnabled());
    ForgetGivingUp();
    Window().ShowFileBegins();
    EXPECT_TRUE(The("cmdGiveUp").isEnabled());
}

TEST_F(LongFile, ACancelSaysThatItIsFinishedFirst)
{
    BeginRun();
    EXPECT_FALSE(IsVisible("lblStopping"));

    Click("cmdOK");
    EXPECT_TRUE(IsVisible("lblStopping"));
    EXPECT_EQ(Text("lblStopping"), "Stopping after this file…");

    EndRun();
    Window().ShowEnd(u"Cancelled after 2 of 5 file(s).");
    EXPECT_FALSE(IsVisible("lblStopping"));
}

}  // namespace
}  // namespace tessarine
