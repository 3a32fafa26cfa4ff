#include "files/Files.h"
#include "ui/main/FailingPowerPointTest.h"

// A PowerPoint that can't be had, or a first file that can't be taken up: what goes wrong before the first open of a
// run from the main window.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

const std::string inSearch = " in procedure Search at Line No. 0 of Class Module Project";
const std::string notSetIn = "Error 91 (" + notSet + ") in procedure ";

class SetUpFailure : public FailingPowerPointTest
{
protected:
    SetUpFailure() { SetJobOver({u"a.pptx", u"b.pptx"}); }

    void ExpectFilesUntouched()
    {
        EXPECT_THAT(TextsOf(u"a.pptx"), ElementsAre("Fabrikam"));
        EXPECT_THAT(TextsOf(u"b.pptx"), ElementsAre("Fabrikam"));
        EXPECT_THAT(Changed(), IsEmpty());
        EXPECT_THAT(Unchanged(), IsEmpty());
    }
};

TEST_F(SetUpFailure, OfAMissingPowerPointEndsAFindAndNamesAllFiles)
{
    office.script.FailOnce("CreateApplication", 429, FromUtf8(noServer));

    Find();

    EXPECT_THAT(LogLines(), ElementsAre("Error 429 (" + noServer + ")" + inSearch, noServer,
                                        "Error 429 (" + noServer + ") in file a.pptx",
                                        "Error 429 (" + noServer + ") in file b.pptx", noResult,
                                        notSetIn + "cmdStartReplacing_Click at Line No. 0 of Form frmMain"));
    EXPECT_EQ(NotOpened(), "2 file(s) could not be opened. The error log names them.");
    EXPECT_THAT(Errors(), IsEmpty());
    EXPECT_TRUE(CurrentProject->options->IsFindOnly);
    ExpectFilesUntouched();
    ExpectLeftAt("File 0 of 2: 0 Document Processed");
    ExpectNextRunToWork();
}

TEST_F(SetUpFailure, OfAMissingPowerPointEndsAReplacement)
{
    office.script.FailOnce("CreateApplication", 429, FromUtf8(noServer));

    Replace();

    EXPECT_THAT(LogLines(), ElementsAre("Error 429 (" + noServer + ")" + inSearch, noServer,
                                        "Error 429 (" + noServer + ") in file a.pptx",
                                        "Error 429 (" + noServer + ") in file b.pptx", noResult,
                                        notSetIn + "Replacement at Line No. 0 of Class Module Project"));
    EXPECT_FALSE(CurrentProject->options->IsFindOnly);
    ExpectFilesUntouched();
    ExpectLeftAt("File 0 of 2: 0 Document Processed");
    ExpectNextRunToWork();
}

TEST_F(SetUpFailure, OfASecondRunNamesNoFileOfTheFirst)
{
    Find();
    ClickInProcessing("cmdOK");
    Presentation(u"0.pptx", {u"Fabrikam"});
    DeleteFile(PathOf(u"b.pptx"));
    office.script.FailOnce("CreateApplication", 429, FromUtf8(noServer));

    Find();

    EXPECT_EQ(NotOpened(), "2 file(s) could not be opened. The error log names them.");
    EXPECT_THAT(LogLines(), testing::Contains("Error 429 (" + noServer + ") in file 0.pptx"));
    EXPECT_THAT(LogLines(), testing::Contains("Error 429 (" + noServer + ") in file a.pptx"));
    EXPECT_THAT(LogLines(), testing::Not(testing::Contains(testing::HasSubstr("b.pptx"))));
}

TEST_F(SetUpFailure, OfAPowerPointThatDiesAtOnceEndsTheRun)
{
    office.DieAt("Application.DisplayAlerts =");

    Find();

    EXPECT_THAT(Calls(), ElementsAre("AttachToRunning", "CreateApplication", "Application.DisplayAlerts = 0",
                                     "AttachToRunning", "CreateApplication", "Application.DisplayAlerts = 0",
                                     "Presentations.Open", "Application.Quit", "AttachToRunning"));
    EXPECT_EQ(LogLines().front(), "Error -2147023170 (The remote procedure call failed)" + inSearch);
    EXPECT_EQ(NotOpened(), "2 file(s) could not be opened. The error log names them.");
    EXPECT_EQ(Label("lblDocChanged"), "File 0 of 2: 0 Document Processed");
    EXPECT_FALSE(Processing().IsComplited);
    EXPECT_EQ(messages.Pointers().back(), MousePointer::Default);
    ExpectFilesUntouched();
    ExpectNextRunToWork();
}

TEST_F(SetUpFailure, WithTheNumberOfAPasswordShowsAnErrorWithoutAFile)
{
    office.script.FailOnce("Application.AutomationSecurity =", 1004, u"refused");

    Find();

    EXPECT_THAT(Errors(), ElementsAre("", "\t  Wrong Password has been supplied."));
    EXPECT_THAT(LogLines(), ElementsAre("Error 1004 (refused)" + inSearch, "Error 1004 (refused) in file a.pptx",
                                        "Error 1004 (refused) in file b.pptx"));
    EXPECT_EQ(NotOpened(), "2 file(s) could not be opened. The error log names them.");
    EXPECT_EQ(messages.Pointers().back(), MousePointer::Default);
    ExpectFilesUntouched();
    ExpectNextRunToWork();
}

TEST_F(SetUpFailure, WithAnotherNumberEndsTheRunWithPowerPointShut)
{
    office.script.FailOnce("Application.AutomationSecurity =", 1234, u"refused");

    Find();

    EXPECT_THAT(LogLines(),
                ElementsAre("Error 1234 (refused)" + inSearch, "refused", "Error 1234 (refused) in file a.pptx",
                            "Error 1234 (refused) in file b.pptx", noResult));
    EXPECT_EQ(NotOpened(), "2 file(s) could not be opened. The error log names them.");
    EXPECT_EQ(office.Running(), 0);
    EXPECT_EQ(messages.Pointers().back(), MousePointer::Default);
    ExpectFilesUntouched();
    ExpectNextRunToWork();
}

TEST_F(SetUpFailure, OfTheFirstBackupPassesThatFileOver)
{
    ShowTab(2);
    ClickBox("chkBackupMode");
    decks.MakeFolder(u"a..bak");

    Replace();

    ASSERT_EQ(LogLines().size(), 4U);
    EXPECT_THAT(LogLines()[0], testing::EndsWith(inSearch));
    EXPECT_THAT(LogLines()[2], testing::EndsWith(" in file a.pptx"));
    EXPECT_EQ(LogLines()[3], noResult);
    EXPECT_EQ(NotOpened(), "1 file(s) could not be opened. The error log names them.");
    EXPECT_EQ(CallsOf("Presentations.Open a.pptx"), 0U);
    EXPECT_THAT(TextsOf(u"a.pptx"), ElementsAre("Fabrikam"));
    EXPECT_TRUE(IsChanged(u"b.pptx"));
    ExpectFinished("Finished: 1 of 2 file(s) changed");
}

TEST_F(SetUpFailure, IsPassedOverOnceOnly)
{
    CurrentProject->BeforFileProcess += [](const String& path) { DeleteFile(path); };

    Find();

    EXPECT_THAT(LogLines(),
                ElementsAre("Error 53 (File not found: could not find a.pptx)" + inSearch,
                            "File not found: could not find a.pptx",
                            "Error 53 (File not found: could not find a.pptx) in file a.pptx", noResult,
                            "Error 53 (File not found: could not find b.pptx) in procedure cmdStartReplacing_Click at "
                            "Line No. 0 of Form frmMain"));
    EXPECT_EQ(NotOpened(), "1 file(s) could not be opened. The error log names them.");
    EXPECT_TRUE(TellsOfAnEarlyEnd());
    EXPECT_EQ(office.Running(), 1);
    ExpectLeftAt("File 2 of 2: b.pptx");
}

}  // namespace
}  // namespace tessarine
