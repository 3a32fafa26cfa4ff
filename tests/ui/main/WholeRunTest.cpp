#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QProgressBar>
#include <QTabWidget>

#include "files/Files.h"
#include "platform/ProgramFolder.h"
#include "shell/TaskbarProgress.h"
#include "support/Fixtures.h"
#include "support/TemporaryFolder.h"
#include "ui/main/RunFromWindowTest.h"
#include "ui/run/ResultTree.h"

// Whole runs from the main window: what the user sees meanwhile and afterwards, and what is in the files.

namespace tessarine
{
namespace
{

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class WholeRun : public RunFromWindowTest
{
protected:
    ~WholeRun() override
    {
        if (hasBox_)
            SetMessageBox(previousBox_);
    }

    /// Acts while the question before a run is on the screen, and answers it with Yes. All messages go to
    /// `toldMessages`.
    void AtTheQuestion(std::function<void()> act)
    {
        hasBox_ = true;
        previousBox_ = SetMessageBox([this, act = std::move(act)](const Message& message) {
            toldMessages.push_back(message);
            if (message.buttons == MessageButtons::YesNo)
                act();
            return MessageAnswer::Yes;
        });
    }

    std::vector<Message> toldMessages{{}};

private:
    bool hasBox_ = false;
    MessageBoxPort previousBox_;
};

const Pair fabrikam{u"Fabrikam", u"Contoso"};
const Pair plan{u"Plan", u"Project", {&OptionSetting::InSlides, &OptionSetting::InHyperlinkAddresses}};

TEST_F(WholeRun, ShowsTheWarningsOfEachFile)
{
    File(u"a.pptx", test::Deck().Slide(test::Title(u"Fabrikam")).Signed().Bytes());
    Presentation(u"b.pptx", {u"Fabrikam"});
    SetJob({fabrikam});

    Replace();

    const auto lines = Lines(*Processing().trvChangedFiles);
    const std::string warning = "\tWarning: its digital signatures were removed, as its content was changed";
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[0], "a.pptx");
    EXPECT_EQ(lines[1], warning);
    EXPECT_EQ(std::ranges::count(lines, warning), 1);
    EXPECT_THAT(LogLines(), testing::Contains(EndsWith("a.pptx: its digital signatures were removed, as its content "
                                                       "was changed")));
}

TEST_F(WholeRun, SaysWhereNothingCountedCouldBeChanged)
{
    Presentation(u"a.pptx", {u"Fabrikam"});
    SetJob({{u"1", u"7777", {&OptionSetting::InBuiltinProperty}}});

    Replace();

    EXPECT_THAT(Lines(*Processing().trvChangedFiles),
                testing::IsSupersetOf({"a.pptx", "\tCounted, nothing could be changed"}));
}

TEST_F(WholeRun, EndsAtItsBeginningWhenItsListFileHasGone)
{
    SetJobOver({u"one.pptx"});
    const String list = folder.PathOf(u"list.csv");
    CurrentProject->FindAndReplaceList->ExportsList(list);
    Window();
    ClickBox("optLoad(0)");
    Type("txtLoadsearch", ToQt(list));
    AtTheQuestion([&] { DeleteFile(list); });

    Click("cmdStartReplacing(0)");

    EXPECT_EQ(toldMessages.back(), (Message{GlobalMsg(u"1003"), MessageIcon::Exclamation}));
    EXPECT_THAT(TextsOf(u"one.pptx"), ElementsAre("Fabrikam"));
    EXPECT_EQ(Caption("cmdOK"), "Cancel");
    EXPECT_TRUE(Processing().close());
}

TEST_F(WholeRun, EndsAtItsBeginningWhenItsListFileHasLostItsPairs)
{
    SetJobOver({u"one.pptx"});
    const String list = folder.PathOf(u"list.csv");
    CurrentProject->FindAndReplaceList->ExportsList(list);
    FindAndReplaceItems().ExportsList(folder.PathOf(u"empty.csv"));
    ClickBox("optLoad(0)");
    Type("txtLoadsearch", ToQt(list));
    AtTheQuestion([&] { folder.Write(u"list.csv", ContentOf(folder.PathOf(u"empty.csv"))); });

    Click("cmdStartReplacing(0)");

    EXPECT_EQ(toldMessages.back(), (Message{GlobalMsg(u"1055"), MessageIcon::Exclamation}));
    EXPECT_THAT(TextsOf(u"one.pptx"), ElementsAre("Fabrikam"));
    EXPECT_EQ(Caption("cmdOK"), "Cancel");
}

TEST_F(WholeRun, EndsAtItsBeginningWhenTheGridHasLostItsPairs)
{
    SetJobOver({u"one.pptx"});
    Window();
    AtTheQuestion([this] { Window().LoadGrid(FindAndReplaceItems()); });

    Click("cmdStartReplacing(1)");

    EXPECT_EQ(toldMessages.back(), (Message{GlobalMsg(u"1055"), MessageIcon::Exclamation}));
    EXPECT_EQ(Label("lblDocChanged"), "File 0 of 1: 0 Document Processed");
    EXPECT_EQ(Caption("cmdOK"), "Cancel");
}

TEST_F(WholeRun, OfAnotherKindKeepsTheTabsOfAnOpenWindow)
{
    SetJobOver({u"one.pptx"});
    Find();
    auto& tabs = InProcessing<QTabWidget>("SSTab1");
    tabs.setCurrentIndex(2);

    Replace();

    EXPECT_EQ(tabs.tabText(1).toStdString(), English(u"frmProcessingDocuments", u"SSTab1.TabCaption1(1)"));
    EXPECT_EQ(tabs.currentIndex(), 0);
    EXPECT_FALSE(Processing().tmrelapsedSecsX->Enabled());
    EXPECT_THAT(TextsOf(u"one.pptx"), ElementsAre("Contoso"));
}

TEST_F(WholeRun, LeavesOutADeletedPairFromTheNextFileOn)
{
    SetJobOver({u"1.pptx", u"2.pptx"});
    Before(u"2.pptx", [this] {
        messages.Next(MessageAnswer::Yes);
        Window().cmdDelete_Click();
    });

    Replace();

    EXPECT_THAT(TextsOf(u"1.pptx"), ElementsAre("Contoso"));
    EXPECT_THAT(TextsOf(u"2.pptx"), ElementsAre("Fabrikam")) << "deleted before its turn";
    EXPECT_EQ(CurrentProject->FindAndReplaceList->Count(), 0);
    EXPECT_TRUE(Processing().IsComplited);
}

TEST_F(WholeRun, ATextWithoutAPlaceholderKeepsItsLetters)
{
    const TemporaryFolder program;
    program.Write(
        u"Languages/English.lng",
        "[frmProcessingDocuments]\nlblChangesMade.Caption1=%d of %i by %s\nlblDocChanged.caption2=%d/%i %s\n");
    SetJobOver({u"one.pptx"});
    Window();
    const String previous = SetProgramFolder(program.Path());

    Find();

    SetProgramFolder(previous);
    EXPECT_EQ(Label("lblChangesMade"), "1 of %i by %s");
    EXPECT_EQ(Label("lblDocChanged"), "1/1 %s");
}

TEST_F(WholeRun, ItsProgressIsShownInTheTaskbarUntilItEnds)
{
    std::vector<std::optional<double>> shown;
    SetTaskbarProgress([&shown](std::optional<double> share) { shown.push_back(share); });
    SetJobOver({u"one.pptx", u"two.pptx"});

    Find();

    EXPECT_THAT(shown, ElementsAre(0.0, 0.5, 1.0, std::nullopt));
    SetTaskbarProgress({});
}

TEST_F(WholeRun, AFindSortsEveryKindOfFileAndChangesNone)
{
    Presentation(u"a Fabrikam.pptx", {u"Fabrikam", u"More of Fabrikam, Fabrikam"});
    Presentation(u"b nothing.pptx", {u"Nobody"});
    SetMode(Presentation(u"c read only.pptx", {u"Fabrikam"}), 0444);
    File(u"d locked.pptx", test::fixtures::EncryptedAgile());
    const std::string before = ContentOf(PathOf(u"a Fabrikam.pptx"));
    SetJob({fabrikam, plan});

    Find();

    EXPECT_THAT(Lines(*Processing().trvChangedFiles),
                ElementsAre("a Fabrikam.pptx", "\tFabrikam", "\t\tSlides (3)", "\tPlan", "\t\tSlides (0)",
                            "\t\tHyperlinks Addresses (0)"));
    EXPECT_THAT(Lines(*Processing().trvNotChangedFiles), ElementsAre("b nothing.pptx"));
    EXPECT_THAT(Lines(*Processing().trvErrors), ElementsAre("c read only.pptx", "\tRead Only File.", "d locked.pptx",
                                                            "\t  Wrong Password has been supplied."));
    EXPECT_EQ(Label("lblDocChanged"), "Finished: matches in 1 of 4 file(s)");
    EXPECT_EQ(Label("lblChangesMade"), "Match(es) found: 3");
    EXPECT_EQ(Caption("cmdOK"), "OK");
    EXPECT_TRUE(Processing().IsComplited);
    EXPECT_EQ(InProcessing<QProgressBar>("pgbar1").value(), 4);
    EXPECT_TRUE(ContentOf(PathOf(u"a Fabrikam.pptx")) == before);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(WholeRun, AReplacementChangesTheFiles)
{
    Presentation(u"a.pptx", {u"Fabrikam and Fabrikam", u"The Plan"});
    Presentation(u"b.pptx", {u"nothing"});
    SetJob({fabrikam, plan});

    Replace();

    EXPECT_THAT(TextsOf(u"a.pptx"), ElementsAre("Contoso and Contoso", "The Project"));
    EXPECT_EQ(Label("lblDocChanged"), "Finished: 1 of 2 file(s) changed");
    EXPECT_EQ(Label("lblChangesMade"), "Change(s) made: 3");
    EXPECT_EQ(InProcessing<QTabWidget>("SSTab1").tabText(1).toStdString(),
              English(u"frmProcessingDocuments", u"SSTab1.TabCaption(1)"));
    EXPECT_TRUE(CurrentProject->options->IsFindOnly) << "again, after the run";
}

TEST_F(WholeRun, WithoutTheCountTheTreesSayWhetherAndNotHowOften)
{
    Presentation(u"a.pptx", {u"Fabrikam Fabrikam"});
    SetJob({fabrikam, plan});
    ShowTab(2);
    ClickBox("chkRequireCount");

    Find();

    EXPECT_THAT(Lines(*Processing().trvChangedFiles),
                ElementsAre("a.pptx", "\tFabrikam", "\t\tSlides (Found)", "\tPlan", "\t\tSlides (Not Found)",
                            "\t\tHyperlinks Addresses (Not FOund)"));
    EXPECT_EQ(Label("lblChangesMade"), "Location(s) with matches: 1");
}

TEST_F(WholeRun, AnItemWithoutLocationsStandsWithoutRowsUnderAChangedFile)
{
    Presentation(u"a.pptx", {u"Fabrikam"});
    SetJob({fabrikam, {u"x", u"", {}}});

    Find();

    EXPECT_THAT(Lines(*Processing().trvChangedFiles), ElementsAre("a.pptx", "\tFabrikam", "\t\tSlides (1)", "\tx"));
}

TEST_F(WholeRun, TheWindowIsSetUpBeforeTheFirstFile)
{
    SetJobOver({u"a.pptx"});
    std::vector<std::string> seen;
    CurrentProject->BeforFileProcess += [&](const String&) {
        seen = {Label("lblDocChanged"),
                Label("lblChangesMade"),
                Caption("cmdOK"),
                Processing().windowTitle().toStdString(),
                std::to_string(InProcessing<QTabWidget>("SSTab1").currentIndex()),
                std::to_string(InProcessing<QProgressBar>("pgbar1").maximum())};
    };

    Find();

    EXPECT_THAT(seen,
                ElementsAre("File 1 of 1: a.pptx", "Match(es) found: 0", "Cancel", "Processing Documents", "0", "1"));
}

TEST_F(WholeRun, BeginsWithTheWordsForItsKindAndCount)
{
    SetJobOver({u"a.pptx"});
    std::string total;
    CurrentProject->BeforFileProcess += [&](const String&) { total = Label("lblChangesMade"); };
    ShowTab(2);
    ClickBox("chkRequireCount");

    Find();
    EXPECT_EQ(total, "Location(s) with matches: 0");
    ClickInProcessing("cmdOK");

    Replace();
    EXPECT_EQ(total, "Change(s) made: 0");
    ClickInProcessing("cmdOK");

    ClickBox("chkRequireCount");
    Replace();
    EXPECT_EQ(total, "Change(s) made: 0");
}

TEST_F(WholeRun, ACancelSeenBetweenTwoFilesLeavesACaptionThatCloses)
{
    SetJobOver({u"1.pptx", u"2.pptx", u"3.pptx"});
    Before(u"2.pptx", [this] { ClickInProcessing("cmdOK"); });

    Replace();

    EXPECT_EQ(Caption("cmdOK"), "OK");
    EXPECT_TRUE(Processing().IsComplited);
    EXPECT_EQ(InProcessing<QProgressBar>("pgbar1").value(), 3);
    EXPECT_THAT(TextsOf(u"2.pptx"), ElementsAre("Fabrikam"));
    ClickInProcessing("cmdOK");
    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
}

TEST_F(WholeRun, ACancelDuringTheThirdFileEndsAfterIt)
{
    SetJobOver({u"1.pptx", u"2.pptx", u"3.pptx", u"4.pptx", u"5.pptx"});
    atDelivery = [this] {
        if (frmProcessingDocuments::Loaded() != nullptr && Label("lblDocChanged") == "File 3 of 5: 3.pptx")
            ClickInProcessing("cmdOK");
    };

    Replace();

    EXPECT_THAT(TextsOf(u"3.pptx"), ElementsAre("Contoso"));
    EXPECT_THAT(TextsOf(u"4.pptx"), ElementsAre("Fabrikam"));
    EXPECT_TRUE(Processing().IsComplited);
    EXPECT_EQ(Caption("cmdOK"), "OK");
    EXPECT_EQ(InProcessing<QProgressBar>("pgbar1").value(), 5);
    EXPECT_EQ(Label("lblDocChanged"), "File 4 of 5: 4.pptx") << "begun, and left at once";
    EXPECT_EQ(Label("lblChangesMade"), "Change(s) made: 3");
    EXPECT_FALSE(CurrentProject->IsProcessCancel) << "cleared for the next run";
}

TEST_F(WholeRun, ACancelDuringTheThirdFileSavesNoFileMoreWhereEventsAreDeliveredNowAndThen)
{
    SetJobOver({u"1.pptx", u"2.pptx", u"3.pptx", u"4.pptx", u"5.pptx"});
    // So fast that the moment for the next delivery never comes while a file is processed.
    SetDeliverPendingEvents([] {});
    SetDeliverEventsAtOnce([] { QCoreApplication::processEvents(); });
    Before(u"3.pptx", [this] {
        // As a click comes in: it waits until somebody asks for events.
        QMetaObject::invokeMethod(
            &Processing(), [this] { ClickInProcessing("cmdOK"); }, Qt::QueuedConnection);
    });

    Replace();
    SetDeliverEventsAtOnce({});

    EXPECT_THAT(TextsOf(u"3.pptx"), ElementsAre("Contoso"));
    EXPECT_THAT(TextsOf(u"4.pptx"), ElementsAre("Fabrikam"));
    EXPECT_THAT(TextsOf(u"5.pptx"), ElementsAre("Fabrikam"));
    EXPECT_EQ(Label("lblDocChanged"), "File 4 of 5: 4.pptx");
}

TEST_F(WholeRun, AnUnopenedFileIsCountedAndNamedInTheLog)
{
    Presentation(u"a.pptx", {u"Fabrikam"});
    File(u"b broken.pptx", "no presentation");
    Presentation(u"c.pptx", {u"Fabrikam"});
    SetJob({fabrikam});

    Find();

    EXPECT_THAT(Lines(*Processing().trvChangedFiles),
                ElementsAre("a.pptx", "\tFabrikam", "\t\tSlides (1)", "\tFabrikam", "\t\tSlides (1)", "c.pptx",
                            "\tFabrikam", "\t\tSlides (1)"))
        << "the result of the file before stands in for that of the broken one";
    EXPECT_TRUE(InProcessing("lblNotOpened").isVisible());
    EXPECT_EQ(Label("lblNotOpened"), "1 file(s) could not be opened. The error log names them.");
    EXPECT_THAT(LogLines().back(), HasSubstr("b broken.pptx"));

    ClickInProcessing("cmdErrorLog");
    EXPECT_THAT(shell.Opened(), ElementsAre(ErrorLogPath()));
}

TEST_F(WholeRun, ABrokenFirstFileHasNoNode)
{
    File(u"a broken.pptx", "no presentation");
    Presentation(u"b.pptx", {u"Fabrikam"});
    SetJob({fabrikam});

    Find();

    EXPECT_THAT(Lines(*Processing().trvChangedFiles), ElementsAre("b.pptx", "\tFabrikam", "\t\tSlides (1)"));
    EXPECT_THAT(Lines(*Processing().trvErrors), IsEmpty());
    EXPECT_EQ(Label("lblDocChanged"), "Finished: matches in 1 of 2 file(s)");
    EXPECT_THAT(LogLines(), testing::Contains(StartsWith("Error 91 (")))
        << "there is no result, which the report trips over";
    EXPECT_THAT(LogLines(), testing::Contains(AllOf(HasSubstr("mProject_AfterFileProcess"),
                                                    HasSubstr(" at Line No. 0 of Form frmMain"))));
}

TEST_F(WholeRun, ALastFileWithAnErrorStillEndsTheRun)
{
    Presentation(u"a.pptx", {u"Fabrikam"});
    File(u"b locked.pptx", test::fixtures::EncryptedStandard());
    SetJob({fabrikam});

    Find();

    EXPECT_TRUE(Processing().IsComplited);
    EXPECT_EQ(Caption("cmdOK"), "OK");
}

TEST_F(WholeRun, AFileThatVanishesAfterAProcessedOneEndsTheRun)
{
    Presentation(u"a.pptx", {u"Fabrikam"});
    const String vanishing = Presentation(u"b.pptx", {u"Fabrikam"});
    SetJob({fabrikam});
    CurrentProject->BeforFileProcess += [&](const String& path) {
        if (path != vanishing)
            DeleteFile(vanishing);
    };

    Find();

    EXPECT_FALSE(Processing().IsComplited);
    EXPECT_EQ(Caption("cmdOK"), "Cancel");
    ASSERT_EQ(LogLines().size(), 1U);
    EXPECT_THAT(LogLines().front(),
                AllOf(StartsWith("Error 53 ("), HasSubstr("b.pptx"),
                      EndsWith(") in procedure cmdStartReplacing_Click at Line No. 0 of Form frmMain")));
    EXPECT_TRUE(Processing().close());
    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
}

TEST_F(WholeRun, AFileListedTwiceHasOneNodeAndIsCountedOnce)
{
    const String path = Presentation(u"a.pptx", {u"Fabrikam"});
    SetJob({fabrikam});
    const String list = folder.Write(u"files.txt", ToUtf8(path) + "\r\n" + ToUtf8(path) + "\r\n");
    ShowTab(1);
    ClickBox("optFileProcess(1)");
    Type("txtGetFileName", ToQt(list));

    Find();

    EXPECT_THAT(Lines(*Processing().trvChangedFiles),
                ElementsAre("a.pptx", "\tFabrikam", "\t\tSlides (1)", "\tFabrikam", "\t\tSlides (1)"));
    EXPECT_EQ(Label("lblDocChanged"), "Finished: matches in 1 of 2 file(s)");
    EXPECT_EQ(Label("lblChangesMade"), "Match(es) found: 2");
}

TEST_F(WholeRun, TheListOfAFileReplacesTheGrid)
{
    Presentation(u"a.pptx", {u"Fabrikam Plan"});
    SetJob({fabrikam});
    auto list = std::make_shared<FindAndReplaceItems>();
    const auto setting = std::make_shared<OptionSetting>();
    setting->InSlides = true;
    list->Add(u"Plan", u"Project", setting, CurrentProject);
    list->ExportsList(folder.PathOf(u"list.csv"));
    ShowTab(0);
    ClickBox("optLoad(0)");
    Type("txtLoadsearch", ToQt(folder.PathOf(u"list.csv")));

    Replace();

    EXPECT_THAT(TextsOf(u"a.pptx"), ElementsAre("Fabrikam Project"));
    EXPECT_THAT(Finds(), ElementsAre("Fabrikam")) << "the job's own list stays";
}

TEST_F(WholeRun, TheLogOnTheClipboardIsCompleteLetterByLetter)
{
    Presentation(u"a.pptx", {u"Fabrikam"});
    Presentation(u"b.pptx", {u"nothing"});
    SetMode(Presentation(u"c.pptx", {u"Fabrikam"}), 0444);
    SetJob({fabrikam, plan});
    Find();

    ClickInProcessing("cmdCopyLog");

    EXPECT_EQ(WithoutFolder(QGuiApplication::clipboard()->text().toStdString()),
              "a.pptx - At least 1 occurrence(s) found \r\n"
              "\tFabrikam\r\n"
              "\tPlan\r\n"
              "Fabrikam - At least 1 occurrence(s) found \r\n"
              "\tSlides (1)\r\n"
              "Plan - At least 1 occurrence(s) found \r\n"
              "\tSlides (0)\r\n"
              "\tHyperlinks Addresses (0)\r\n"
              "b.pptx - No occurrence(s) found \r\n");
}

TEST_F(WholeRun, BackupsAreRestoredAndRemovedFromTheWindow)
{
    Presentation(u"a.ppt", {u"Fabrikam"});
    const std::string before = ContentOf(PathOf(u"a.ppt"));
    SetJob({fabrikam});
    ShowTab(2);
    ClickBox("chkBackupMode");
    Replace();
    ASSERT_THAT(TextsOf(u"a.ppt"), ElementsAre("Contoso"));
    ASSERT_EQ(FilesOfFolder(decks.Path()).size(), 2U);

    InProcessing<QTabWidget>("SSTab1").setCurrentIndex(1);

    ClickInProcessing("cmdCommand(1)");
    EXPECT_TRUE(ContentOf(PathOf(u"a.ppt")) == before);

    ClickInProcessing("cmdCommand(0)");
    EXPECT_THAT(FilesOfFolder(decks.Path()), ElementsAre(PathOf(u"a.ppt")));
}

TEST_F(WholeRun, BackupsOfLongerExtensionsStayAsTheyAre)
{
    SetJobOver({u"a.pptx"});
    ShowTab(2);
    ClickBox("chkBackupMode");
    Replace();
    InProcessing<QTabWidget>("SSTab1").setCurrentIndex(1);

    ClickInProcessing("cmdCommand(1)");
    ClickInProcessing("cmdCommand(0)");

    // Intended: backups are made under one name and looked for under another. Both rules count on extensions of three
    // letters, and people know the names.
    EXPECT_THAT(TextsOf(u"a.pptx"), ElementsAre("Contoso"));
    EXPECT_TRUE(FileExists(PathOf(u"a..bak")));
}

TEST_F(WholeRun, OkClosesTheWindowAndTheNextRunHasANewOne)
{
    SetJobOver({u"a.pptx"});
    Find();

    ClickInProcessing("cmdOK");
    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);

    Find();
    EXPECT_THAT(Lines(*Processing().trvChangedFiles), ElementsAre("a.pptx", "\tFabrikam", "\t\tSlides (1)"));
}

TEST_F(WholeRun, AnOpenWindowShowsTheNextRunBelowTheFirst)
{
    SetJobOver({u"a.pptx"});
    Find();
    Presentation(u"b.pptx", {u"Fabrikam"});

    Find();

    EXPECT_THAT(Lines(*Processing().trvChangedFiles),
                ElementsAre("a.pptx", "\tFabrikam", "\t\tSlides (1)", "\tFabrikam", "\t\tSlides (1)", "b.pptx",
                            "\tFabrikam", "\t\tSlides (1)"));
    EXPECT_EQ(Label("lblChangesMade"), "Match(es) found: 2") << "the counters begin anew";
    EXPECT_EQ(Label("lblDocChanged"), "Finished: matches in 1 of 2 file(s)") << "files that the trees have already";
}

TEST_F(WholeRun, TheElapsedTimeStopsWithTheRun)
{
    SetJobOver({u"a.pptx"});
    bool tickedInRun = false;
    CurrentProject->BeforFileProcess += [&](const String&) { tickedInRun = Processing().tmrelapsedSecsX->Enabled(); };

    Find();

    EXPECT_TRUE(tickedInRun);
    EXPECT_FALSE(Processing().tmrelapsedSecsX->Enabled());
}

TEST_F(WholeRun, AStartCommandDuringARunDoesNothing)
{
    for (const char16_t* name : {u"1.pptx", u"2.pptx", u"3.pptx"})
        Presentation(name, {u"Fabrikam"});
    const TemporaryFolder others;
    others.Write(u"other.pptx", test::Deck().Slide(test::Title(u"Fabrikam")).Bytes());
    const std::string other = ContentOf(others.PathOf(u"other.pptx"));
    SetJob({fabrikam});
    bool hasStarted = false;
    atDelivery = [&] {
        if (hasStarted || frmProcessingDocuments::Loaded() == nullptr ||
            Label("lblDocChanged") != "File 2 of 3: 2.pptx")
            return;
        hasStarted = true;
        The<QLineEdit>("txtStartFolder").setText(ToQt(others.Path()));
        Click("cmdStartReplacing(0)");
    };

    Replace();

    EXPECT_TRUE(hasStarted);
    EXPECT_EQ(messages.Messages().size(), 1U) << "the question was asked once";
    for (const char16_t* name : {u"1.pptx", u"2.pptx", u"3.pptx"})
        EXPECT_THAT(TextsOf(name), ElementsAre("Contoso")) << ToUtf8(name);
    EXPECT_TRUE(ContentOf(others.PathOf(u"other.pptx")) == other);
}

TEST_F(WholeRun, AChangeOfLanguageLeavesTheWindowOfARunAlone)
{
    SetJobOver({u"a.pptx"});
    Find();
    CurrentLanguageFile = u"German.lng";

    Window().LoadLng();

    EXPECT_EQ(Caption("cmdOK"), "OK");
    EXPECT_EQ(Caption("cmdCopyLog"), "Copy log to clipboard");
    EXPECT_EQ(Label("lblDocChanged"), "Finished: matches in 1 of 1 file(s)");
}

TEST_F(WholeRun, ARunGoesOnAfterItsWindowWasClosed)
{
    SetJobOver({u"1.pptx", u"2.pptx"});
    Before(u"2.pptx", [this] {
        Processing().IsComplited = true;
        ClickInProcessing("cmdOK");
    });

    Replace();

    EXPECT_THAT(TextsOf(u"2.pptx"), ElementsAre("Contoso"));
    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr) << "nothing opens it again";
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(WholeRun, ClosingTheMainWindowDuringARunLetsItEnd)
{
    SetJobOver({u"1.pptx", u"2.pptx"});
    Window().PutIsModifed(false);
    bool isUnloaded = false;
    Window().Unloaded += [&isUnloaded] { isUnloaded = true; };
    CurrentProject->BeforFileProcess += [&](const String&) {
        Window().close();
        EXPECT_FALSE(isUnloaded) << "the program would end";
    };

    Replace();

    EXPECT_THAT(TextsOf(u"2.pptx"), ElementsAre("Contoso"));
    EXPECT_FALSE(Window().isVisible());
    EXPECT_TRUE(isUnloaded);
}

TEST_F(WholeRun, TheCloseButtonOfTheRunsWindowAsksForACancel)
{
    SetJobOver({u"1.pptx", u"2.pptx", u"3.pptx"});
    Before(u"1.pptx", [this] { Processing().close(); });

    Replace();

    ASSERT_NE(frmProcessingDocuments::Loaded(), nullptr);
    EXPECT_TRUE(Processing().isVisible());
    EXPECT_THAT(TextsOf(u"3.pptx"), ElementsAre("Fabrikam"));
}

}  // namespace
}  // namespace tessarine
