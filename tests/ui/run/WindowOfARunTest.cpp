#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>

#include "app/GlobalState.h"
#include "log/ErrorLog.h"
#include "shell/WindowPlace.h"
#include "ui/run/ProcessingWindowTest.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class WindowOfARunTest : public ProcessingWindowTest
{
protected:
    std::vector<std::string> Tabs()
    {
        std::vector<std::string> captions;
        for (int tab = 0; tab < 4; ++tab)
            captions.push_back(The<QTabWidget>("SSTab1").tabText(tab).toStdString());
        return captions;
    }

    std::vector<bool> VisiblePanels()
    {
        return {IsVisible("panelProgress"), IsVisible("panelFilesChanged"), IsVisible("panelFilesNotChanged"),
                IsVisible("panelErrors")};
    }

    /// Lets what was closed go away.
    static void ForgetClosedWindows() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
};

TEST_F(WindowOfARunTest, IsLoadedOnTheFilesThatChangedWithItsTimerRunning)
{
    Window();

    EXPECT_EQ(The<QTabWidget>("SSTab1").currentIndex(), 1);
    EXPECT_THAT(VisiblePanels(), ElementsAre(false, true, false, false));
    EXPECT_FALSE(Window().IsComplited);
    EXPECT_TRUE(Window().tmrelapsedSecsX->Enabled());
    EXPECT_THAT(intervals_, ElementsAre(1));
    EXPECT_EQ(Text("lblelapsedSecs"), "Total Elapsed Time : 00:00:00");
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(WindowOfARunTest, BeginsARunOnTheProgress)
{
    BeginRun();

    EXPECT_EQ(The<QTabWidget>("SSTab1").currentIndex(), 0);
    EXPECT_THAT(VisiblePanels(), ElementsAre(true, false, false, false));
    EXPECT_EQ(The<QProgressBar>("pgbar1").minimum(), 0);
    EXPECT_EQ(The<QProgressBar>("pgbar1").maximum(), 5);
    EXPECT_EQ(The<QProgressBar>("pgbar1").value(), 0);
}

TEST_F(WindowOfARunTest, ShowsThePanelOfTheTabThatIsClicked)
{
    BeginRun();

    ShowTab(3);
    EXPECT_THAT(VisiblePanels(), ElementsAre(false, false, false, true));
    EXPECT_TRUE(IsVisible("trvErrors"));

    ShowTab(2);
    EXPECT_THAT(VisiblePanels(), ElementsAre(false, false, true, false));
    EXPECT_TRUE(IsVisible("trvNotChangedFiles"));
}

TEST_F(WindowOfARunTest, MovesTheProgressAFileAtATime)
{
    BeginRun();

    Window().AddProgressStep();
    EXPECT_EQ(The<QProgressBar>("pgbar1").value(), 1);

    Window().FillProgress();
    EXPECT_EQ(The<QProgressBar>("pgbar1").value(), 5);
}

TEST_F(WindowOfARunTest, ShowsFastFilesTogetherAMomentLater)
{
    BeginRun();

    for (int file = 0; file < 3; ++file)
        Window().AddProgressStep();

    const auto& bar = The<QProgressBar>("pgbar1");
    EXPECT_EQ(bar.value(), 1);
    EXPECT_TRUE(QTest::qWaitFor([&bar] { return bar.value() == 3; }));
}

TEST_F(WindowOfARunTest, StartsTheProgressAnewForAnotherRun)
{
    BeginRun();
    Window().FillProgress();

    Window().SetProgressRange(3);

    EXPECT_EQ(The<QProgressBar>("pgbar1").value(), 0);
    EXPECT_EQ(The<QProgressBar>("pgbar1").maximum(), 3);
}

TEST_F(WindowOfARunTest, ShowsTheTextsOfTheRunAsTheyAre)
{
    Window().SetDocChanged(u"File 1 of 2: /home/<b>R&D</b>/a.pptx");
    Window().SetChangesMade(u"Change(s) made: 7");
    Window().SetOKCaption(u"Cancel");

    EXPECT_EQ(Text("lblDocChanged"), "File 1 of 2: /home/<b>R&D</b>/a.pptx");
    EXPECT_EQ(Text("lblChangesMade"), "Change(s) made: 7");
    EXPECT_EQ(Text("cmdOK"), "Cancel");
}

TEST_F(WindowOfARunTest, DoesNotGrowWithALongPath)
{
    BeginRun();
    const int width = Window().minimumSizeHint().width();

    Window().SetDocChanged(String(2000, u'x'));

    EXPECT_EQ(Window().minimumSizeHint().width(), width);
}

TEST_F(WindowOfARunTest, ShowsTheElapsedTimeAtEachTickAndDeliversEvents)
{
    Window();
    int deliveries = 0;
    SetDeliverPendingEvents([&] { ++deliveries; });
    now_ = now_.addSecs(3661);

    Tick();

    EXPECT_EQ(deliveries, 1);
    EXPECT_EQ(Text("lblelapsedSecs"), "Total Elapsed Time : 01:01:01");
}

TEST_F(WindowOfARunTest, ShowsTheElapsedTimeWhenAsked)
{
    Window();
    int deliveries = 0;
    SetDeliverPendingEvents([&] { ++deliveries; });
    now_ = now_.addSecs(59);

    Window().UpdateSecs();

    EXPECT_EQ(deliveries, 1);
    EXPECT_EQ(Text("lblelapsedSecs"), "Total Elapsed Time : 00:00:59");
}

TEST_F(WindowOfARunTest, LogsADeliveryThatFails)
{
    Window();
    SetDeliverPendingEvents([] { throw Failure(FailureNumber::Overflow, u"Overflow"); });

    Window().UpdateSecs();

    EXPECT_THAT(log_.Lines(), ElementsAre("Error 6 (Overflow) in procedure UpdateSecs at Line No. 0 of Form "
                                          "frmProcessingDocuments"));
}

TEST_F(WindowOfARunTest, KeepsTheLastElapsedTimeOnceTheTimerIsDisabled)
{
    BeginRun();

    Window().tmrelapsedSecsX->PutEnabled(false);
    now_ = now_.addSecs(5);
    Tick();

    EXPECT_EQ(Text("lblelapsedSecs"), "Total Elapsed Time : 00:00:00");
}

TEST_F(WindowOfARunTest, AsksTheRunToEndAndStays)
{
    BeginRun();

    Click("cmdOK");

    EXPECT_TRUE(CurrentProject->IsProcessCancel);
    EXPECT_TRUE(Window().isVisible());
    EXPECT_EQ(Text("cmdOK"), "Cancel");
    EXPECT_FALSE(Window().IsComplited);
}

TEST_F(WindowOfARunTest, ChangesNothingAtASecondClickWhileACancelWaits)
{
    BeginRun();
    Click("cmdOK");

    Click("cmdOK");

    EXPECT_TRUE(CurrentProject->IsProcessCancel);
    EXPECT_TRUE(Window().isVisible());
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(WindowOfARunTest, LogsACancelWithoutAProject)
{
    BeginRun();
    CurrentProject.reset();

    Click("cmdOK");

    EXPECT_THAT(log_.Lines(), ElementsAre("Error 91 (Object variable or With block variable not set) in procedure "
                                          "cmdOK_Click at Line No. 0 of Form frmProcessingDocuments"));
    EXPECT_TRUE(Window().isVisible());
}

TEST_F(WindowOfARunTest, ClosesAfterTheRun)
{
    BeginRun();
    EndRun();

    Click("cmdOK");

    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
    EXPECT_FALSE(CurrentProject->IsProcessCancel);
    EXPECT_THAT(timers_, IsEmpty());
}

TEST_F(WindowOfARunTest, IsClosedByItsCloseButtonAfterTheRun)
{
    BeginRun();
    EndRun();

    EXPECT_TRUE(Window().close());

    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
}

TEST_F(WindowOfARunTest, AsksTheRunToEndWhenItsCloseButtonIsPressed)
{
    BeginRun();

    EXPECT_FALSE(Window().close());

    EXPECT_TRUE(CurrentProject->IsProcessCancel);
    EXPECT_TRUE(Window().isVisible());
}

TEST_F(WindowOfARunTest, IsClosedByItsCloseButtonAfterAnUnreportedEnd)
{
    BeginRun();
    Window().IsRunGoing = false;

    EXPECT_TRUE(Window().close());

    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
    EXPECT_FALSE(CurrentProject->IsProcessCancel);
}

TEST_F(WindowOfARunTest, IsClosedByEscapeAfterTheRun)
{
    BeginRun();
    EndRun();
    Window().IsRunGoing = false;

    QTest::keyClick(&Window(), Qt::Key_Escape);

    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
}

TEST_F(WindowOfARunTest, IsClosedByEnterAfterTheRunUnlessEnterHasAMeaningOfItsOwn)
{
    BeginRun();
    EndRun();
    Window().IsRunGoing = false;
    ShowTab(2);
    for (const char* name : {"txtFilter(1)", "trvNotChangedFiles"}) {
        The(name).setFocus();
        QTest::keyClick(&The(name), Qt::Key_Return);
        EXPECT_NE(frmProcessingDocuments::Loaded(), nullptr) << name;
    }
    The("SSTab1").setFocus();

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);

    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
}

TEST_F(WindowOfARunTest, TellsTheTimeLeftAfterTheFirstFiles)
{
    BeginRun();
    Window().SetProgressRange(100);
    now_ = now_.addSecs(20);
    Tick();
    EXPECT_EQ(Text("lblRemaining"), "");

    for (int file = 0; file < 50; ++file)
        Window().AddProgressStep();
    Tick();
    EXPECT_EQ(Text("lblRemaining"), "Time left: about 00:00:20");

    EndRun();
    Window().ShowEnd(u"Cancelled after 50 of 100 file(s).");
    EXPECT_EQ(Text("lblRemaining"), "");
}

TEST_F(WindowOfARunTest, IsNotClosedByEscape)
{
    BeginRun();

    QTest::keyClick(&Window(), Qt::Key_Escape);

    EXPECT_TRUE(Window().isVisible());
    EXPECT_FALSE(CurrentProject->IsProcessCancel);
}

TEST_F(WindowOfARunTest, MayBeClosedWhileATickDeliversEvents)
{
    BeginRun();
    EndRun();
    SetDeliverPendingEvents([this] {
        Click("cmdOK");
        ForgetClosedWindows();
    });

    Tick();

    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
}

TEST_F(WindowOfARunTest, ComesBackEmptyAfterItWasClosed)
{
    BeginRun();
    Add(NothingCounted(u"/a.pptx"));
    Window().FileNotOpened(u"/b.pptx", Failure(70, u"Permission denied"));
    EndRun();
    Click("cmdOK");
    ForgetClosedWindows();

    Window();

    EXPECT_FALSE(Window().IsComplited);
    EXPECT_EQ(The<QTabWidget>("SSTab1").currentIndex(), 1);
    EXPECT_EQ(Window().trvNotChangedFiles->Nodes().FileCount(), 0u);
    EXPECT_EQ(Text("cmdOK"), "OK");
    ShowTab(0);
    EXPECT_FALSE(IsVisible("lblNotOpened"));
}

TEST_F(WindowOfARunTest, GoesWithItsOwner)
{
    auto owner = std::make_unique<QWidget>();
    frmProcessingDocuments& window = frmProcessingDocuments::Instance(owner.get());
    EXPECT_EQ(window.parentWidget(), owner.get());
    EXPECT_TRUE(window.isWindow());
    EXPECT_EQ(window.windowModality(), Qt::NonModal);

    owner.reset();

    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
    EXPECT_THAT(timers_, IsEmpty());
}

TEST_F(WindowOfARunTest, RemembersItsSize)
{
    // Larger than at first, and no larger than the screen.
    const QSize room = Window().screen()->availableSize();
    const QSize size(room.width() - 3, room.height() - 51);
    Window().resize(size);
    EndRun();
    Click("cmdOK");

    EXPECT_EQ(Window().size(), size);
}

TEST_F(WindowOfARunTest, RemembersItsPlace)
{
    Window().resize(Window().minimumSize());
    const QPoint place = Window().screen()->availableGeometry().topLeft() + QPoint(7, 43);
    Window().move(place);
    EndRun();
    Click("cmdOK");

    EXPECT_EQ(Window().pos(), place);
}

TEST_F(WindowOfARunTest, OpensOverTheMiddleOfItsOwner)
{
    QWidget owner;
    const QRect screen = owner.screen()->availableGeometry();
    owner.setGeometry(screen.x() + 40, screen.y() + 10, screen.width() - 60, screen.height() - 90);

    const frmProcessingDocuments& window = frmProcessingDocuments::Instance(&owner);

    const QPoint offset = window.geometry().center() - owner.frameGeometry().center();
    EXPECT_LE(offset.manhattanLength(), 2);
}

TEST_F(WindowOfARunTest, LeavesRoomForItsTitleWhereTheOwnerStandsAtTheLowerEdge)
{
    QWidget owner;
    const QRect screen = owner.screen()->availableGeometry();
    owner.setGeometry(screen.x() + 40, screen.bottom() - 50, screen.width() - 60, 400);

    const frmProcessingDocuments& window = frmProcessingDocuments::Instance(&owner);

    EXPECT_LE(window.pos().y() + window.height() + FrameSize(window).height(), screen.y() + screen.height());
}

TEST_F(WindowOfARunTest, CanAlwaysBeMadeSmallEnoughForTheScreen)
{
    QFont large = Window().font();
    large.setPointSizeF(large.pointSizeF() * 4);
    Window().setFont(large);
    Window().LoadLng();

    const QSize least = Window().minimumSize() + FrameSize(Window());

    EXPECT_LE(least.height(), Window().screen()->availableSize().height());
    EXPECT_LE(least.width(), Window().screen()->availableSize().width());
}

TEST_F(WindowOfARunTest, ClosesWhereItsSizeCannotBeKept)
{
    user_.BlockSettings();
    Window();
    EndRun();

    Click("cmdOK");

    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(WindowOfARunTest, SaysWhatAReplaceRunDoes)
{
    EXPECT_THAT(Tabs(), ElementsAre("&1 Progress", "&2 Files changes", "&3 Files not changes", "&4 Error"));
}

TEST_F(WindowOfARunTest, SaysWhatAFindRunDoes)
{
    IsSearchRun = true;

    EXPECT_THAT(Tabs(), ElementsAre("&1 Progress", "&2 Files with matches", "&3 Files without matches", "&4 Error"));
}

TEST_F(WindowOfARunTest, SpeaksTheLanguageInForceButForTheElapsedTime)
{
    CurrentLanguageFile = u"German.lng";

    EXPECT_EQ(Text("lblWarning"), "Bitte verwenden Sie PowerPoint nicht, bis die Verarbeitung beendet ist.");
    EXPECT_EQ(Text("cmdCopyLog"), "Protokoll kopieren");
    EXPECT_EQ(Text("cmdCommand(0)"), "Sicherungen entfernen");
    EXPECT_EQ(Text("cmdCommand(1)"), "Sicherungen wiederherstellen");
    EXPECT_TRUE(The("cmdCommand(1)").toolTip().startsWith("Setzt die .bak-Dateien"));
    EXPECT_EQ(Tabs()[1], "&2 Geänderte Dateien");
    EXPECT_EQ(Text("lblelapsedSecs"), "Total Elapsed Time : 00:00:00");
    EXPECT_EQ(Window().trvChangedFiles->accessibleName(), "2 Geänderte Dateien");
}

TEST_F(WindowOfARunTest, HasEmptyCaptionsWithoutALanguageFile)
{
    CurrentLanguageFile = u".lng";

    EXPECT_THAT(Tabs(), ElementsAre("", "", "", ""));
    EXPECT_EQ(Text("cmdOK"), "");
    EXPECT_EQ(Text("lblDocChanged"), "");
    EXPECT_EQ(The("cmdCopyLog").toolTip(), "");
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(WindowOfARunTest, KeepsItsLanguageUntilItIsLoadedAnew)
{
    Window();
    CurrentLanguageFile = u"German.lng";
    EXPECT_EQ(Text("cmdCopyLog"), "Copy log to clipboard");

    EndRun();
    Click("cmdOK");

    EXPECT_EQ(Text("cmdCopyLog"), "Protokoll kopieren");
}

TEST_F(WindowOfARunTest, IsWorkedByTheKeyboard)
{
    BeginRun();

    QTest::keyClick(&Window(), Qt::Key_3, Qt::AltModifier);
    EXPECT_EQ(The<QTabWidget>("SSTab1").currentIndex(), 2);

    The("cmdOK").setFocus();
    QTest::keyClick(&The("cmdOK"), Qt::Key_Return);
    EXPECT_TRUE(CurrentProject->IsProcessCancel);
}

// Files that could not be opened.

TEST_F(WindowOfARunTest, SaysNothingWhileEveryFileOpens)
{
    BeginRun();

    EXPECT_FALSE(IsVisible("lblNotOpened"));
    EXPECT_FALSE(IsVisible("cmdErrorLog"));
}

TEST_F(WindowOfARunTest, TellsThatAFailureEndedTheRun)
{
    BeginRun();

    Window().TellRunFailed();

    EXPECT_EQ(Text("lblRunFailed"), "A failure has ended the run early. The error log tells which.");
    EXPECT_TRUE(IsVisible("lblRunFailed"));
    EXPECT_TRUE(IsVisible("cmdErrorLog"));
    EXPECT_FALSE(IsVisible("lblNotOpened"));

    Window().ForgetFailures();
    EXPECT_FALSE(IsVisible("lblRunFailed"));
    EXPECT_FALSE(IsVisible("cmdErrorLog"));
}

TEST_F(WindowOfARunTest, CountsTheFilesThatCouldNotBeOpenedAndLogsWhy)
{
    BeginRun();

    Window().FileNotOpened(u"/a.pptx", Failure(70, u"Permission denied"));
    EXPECT_EQ(Text("lblNotOpened"), "1 file(s) could not be opened. The error log names them.");

    Window().FileNotOpened(u"/b.pptx", Failure(FailureNumber::FileCorrupt, u"The file is damaged"));
    EXPECT_EQ(Text("lblNotOpened"), "2 file(s) could not be opened. The error log names them.");
    EXPECT_TRUE(IsVisible("lblNotOpened"));
    EXPECT_THAT(log_.Lines(), ElementsAre("Error 70 (Permission denied) in file /a.pptx",
                                          "Error -2147023504 (The file is damaged) in file /b.pptx"));
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(WindowOfARunTest, CountsAFileOnceHoweverOftenItFails)
{
    BeginRun();

    Window().FileNotOpened(u"/a.pptx", Failure(70, u"Permission denied"));
    Window().FileNotOpened(u"/a.pptx", Failure(70, u"Permission denied"));

    EXPECT_EQ(Text("lblNotOpened"), "1 file(s) could not be opened. The error log names them.");
    EXPECT_EQ(log_.Lines().size(), 1u);
}

TEST_F(WindowOfARunTest, OpensTheErrorLog)
{
    BeginRun();
    Window().FileNotOpened(u"/a.pptx", Failure(70, u"Permission denied"));

    Click("cmdErrorLog");

    EXPECT_THAT(shell_.Opened(), ElementsAre(ErrorLogPath()));
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(WindowOfARunTest, SaysWhyTheErrorLogDoesNotOpen)
{
    BeginRun();
    Window().FileNotOpened(u"/a.pptx", Failure(70, u"Permission denied"));
    shell_.OpenerAnswers(ShellResult::NoAssociation);

    Click("cmdErrorLog");

    EXPECT_THAT(messages_.Messages(),
                ElementsAre(Message{u"No association for file extension", MessageIcon::Exclamation}));
}

}  // namespace
}  // namespace tessarine
