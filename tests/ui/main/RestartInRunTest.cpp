#include "ui/main/FailingPowerPointTest.h"

// Restarts of PowerPoint in runs from the main window, the quit at their end, and what becomes of a run when one of
// them is refused.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

const std::string inReplacement = " in procedure Replacement at Line No. 0 of Class Module Project";
const std::string inStart = " in procedure cmdStartReplacing_Click at Line No. 0 of Form frmMain";

class RestartInRun : public FailingPowerPointTest
{
protected:
    void TypeCount(const char* name, const QString& digits)
    {
        ShowTab(2);
        QTest::keyClick(&The(name), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&The(name), digits);
    }

    void RestartAfterFiles(int count) { TypeCount("lstRestartFileCount", QString::number(count)); }

    /// The `nth` creation from the start of the run is refused.
    void RefuseCreation(int nth) { office.script.FailOnce("CreateApplication", 429, FromUtf8(noServer), nth); }

    std::vector<std::string> NoServerLines(const std::string& file) const
    {
        return {notSet, "Error 91 (" + notSet + ") in file " + file};
    }
};

using PlannedRestartInRun = RestartInRun;
using UnplannedRestartInRun = RestartInRun;
using QuitInRun = RestartInRun;

TEST_F(PlannedRestartInRun, FollowsEachMultipleOfTheTypedCount)
{
    SetJobOver({u"1.pptx", u"2.pptx", u"3.pptx"});
    RestartAfterFiles(2);
    ClickBox("chkAllowAlert");

    Replace();

    EXPECT_THAT(
        Calls(),
        ElementsAre("AttachToRunning", "CreateApplication", "Application.DisplayAlerts = -1",
                    "Application.AutomationSecurity = 3", "Presentations.Open 1.pptx", "TextRange.Replace Fabrikam",
                    "TextRange.Replace Fabrikam", "Presentation.Save 1.pptx", "Presentation.Close 1.pptx",
                    "Presentations.Open 2.pptx", "TextRange.Replace Fabrikam", "TextRange.Replace Fabrikam",
                    "Presentation.Save 2.pptx", "Presentation.Close 2.pptx", "Application.Quit", "AttachToRunning",
                    "CreateApplication", "Application.DisplayAlerts = -1", "Presentations.Open 3.pptx",
                    "TextRange.Replace Fabrikam", "TextRange.Replace Fabrikam", "Presentation.Save 3.pptx",
                    "Presentation.Close 3.pptx", "Application.Quit", "AttachToRunning"));
    EXPECT_THAT(Changed(), ElementsAreArray(NodesOf({"1.pptx", "2.pptx", "3.pptx"})));
    EXPECT_THAT(Log(), IsEmpty());
    ExpectFinished("Finished: 3 of 3 file(s) changed");
}

TEST_F(PlannedRestartInRun, RefusedAfterAProcessedFileEndsAReplacement)
{
    SetJobOver({u"1.pptx", u"2.pptx", u"3.pptx"});
    RestartAfterFiles(2);
    RefuseCreation(2);

    Replace();

    EXPECT_TRUE(IsChanged(u"1.pptx") && IsChanged(u"2.pptx"));
    EXPECT_THAT(TextsOf(u"3.pptx"), ElementsAre("Fabrikam"));
    EXPECT_THAT(Changed(), ElementsAreArray(NodesOf({"1.pptx", "2.pptx"})));
    EXPECT_THAT(LogLines(), ElementsAre("Error 429 (" + noServer + ")" + inReplacement));
    EXPECT_FALSE(CurrentProject->options->IsFindOnly);
    EXPECT_FALSE(Processing().tmrelapsedSecsX->Enabled());
    ExpectLeftAt("File 2 of 3: 2.pptx");
    ExpectNextRunToWork();
}

TEST_F(PlannedRestartInRun, RefusedAfterAProcessedFileEndsAFindWithTheTimeOn)
{
    SetJobOver({u"1.pptx", u"2.pptx"});
    RestartAfterFiles(1);
    RefuseCreation(2);

    Find();

    EXPECT_THAT(LogLines(), ElementsAre("Error 429 (" + noServer + ")" + inStart));
    EXPECT_TRUE(Processing().tmrelapsedSecsX->Enabled());
    ExpectLeftAt("File 1 of 2: 1.pptx");
    ExpectNextRunToWork();
}

TEST_F(PlannedRestartInRun, RefusedAfterAnOpenFailureKeepsLaterFilesClosed)
{
    SetJobOver({u"1.pptx", u"2.pptx", u"3.pptx"});
    RestartAfterFiles(1);
    office.script.FailOnce("Presentations.Open", 1234, u"scripted");
    RefuseCreation(2);
    RefuseCreation(3);

    Replace();

    EXPECT_EQ(NotOpened(), "3 file(s) could not be opened. The error log names them.");
    EXPECT_THAT(Changed(), IsEmpty());
    EXPECT_THAT(Errors(), IsEmpty());
    std::vector<std::string> expected{"scripted", "Error 1234 (scripted) in file 1.pptx", noResult};
    for (const char* file : {"2.pptx", "3.pptx"}) {
        for (const std::string& line : NoServerLines(file))
            expected.push_back(line);
        expected.push_back(noResult);
    }
    EXPECT_THAT(LogLines(), ElementsAreArray(expected));
    ExpectNextRunToWork();
}

TEST_F(UnplannedRestartInRun, RefusedKeepsThisAndLaterFilesClosed)
{
    SetJobOver({u"1.pptx", u"2.pptx", u"3.pptx"});
    office.DieAt("Presentations.Open", 2);
    RefuseCreation(2);

    Replace();

    EXPECT_TRUE(IsChanged(u"1.pptx"));
    for (const char16_t* name : {u"2.pptx", u"3.pptx"})
        EXPECT_THAT(TextsOf(name), ElementsAre("Fabrikam"));
    EXPECT_EQ(NotOpened(), "2 file(s) could not be opened. The error log names them.");
    std::vector<std::string> expected;
    for (const char* file : {"2.pptx", "3.pptx"})
        for (const std::string& line : NoServerLines(file))
            expected.push_back(line);
    EXPECT_THAT(LogLines(), ElementsAreArray(expected));
    ExpectFinished("Finished: 1 of 3 file(s) changed");
    ExpectNextRunToWork();
}

TEST_F(QuitInRun, ShutsTheUsersOwnPowerPointAtBothEnds)
{
    SetJobOver({u"1.pptx"});
    office.StartByUser();
    int runningAtFirstFile = -1;
    CurrentProject->BeforFileProcess += [&](const String&) {
        runningAtFirstFile = office.Running();
        office.StartByUser();
    };

    Find();

    EXPECT_EQ(runningAtFirstFile, 1) << "the run's";
    EXPECT_EQ(CallsOf("Application.Quit"), 3U);
    ExpectFinished("Finished: matches in 1 of 1 file(s)");
}

TEST_F(QuitInRun, RefusedAtTheEndLeavesTheHourglass)
{
    SetJobOver({u"1.pptx"});
    office.script.FailOnce("Application.Quit", -2147418111, u"Call was rejected by callee.");

    Find();

    EXPECT_THAT(LogLines(), ElementsAre("Error -2147418111 (Call was rejected by callee.)" + inStart));
    EXPECT_TRUE(Processing().IsComplited);
    EXPECT_EQ(Label("lblDocChanged"), "Finished: matches in 1 of 1 file(s)");
    EXPECT_EQ(messages.Pointers().back(), MousePointer::Hourglass);
    EXPECT_EQ(office.Running(), 1);
    ExpectNextRunToWork();
}

TEST_F(QuitInRun, RefusedAfterSkippedFilesIsNoFailureOfAFile)
{
    SetJobOver({u"1.pptx", u"2.pptx"});
    for (const char16_t* name : {u"1.pptx", u"2.pptx"})
        SetMode(PathOf(name), 0444);
    office.script.FailOnce("Application.Quit", -2147418111, u"Call was rejected by callee.");

    Find();

    EXPECT_EQ(NotOpened(), "");
    EXPECT_THAT(LogLines(), testing::Not(testing::Contains(testing::HasSubstr("in file"))));
}

}  // namespace
}  // namespace tessarine
