#include "ui/main/FailingPowerPointTest.h"

// Files that open and then fail, in a run from the main window: at a shape, at a match, at the save, at the close.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

const std::string inEngine = " at Line No. 0 of Class Module SearchFunctions";

/// The line about a file whose processing failed in one of its locations, or by itself.
std::string LineOf(const std::string& file, std::int32_t number, const std::string& text, bool isInSlides)
{
    const std::string error = "Error " + std::to_string(number) + " (";
    const std::string whole = isInSlides ? error + text + ") in procedure Slides" + inEngine : text;
    return error + error + whole + ") in procedure ProcessFile" + inEngine + ") in file " + file;
}

class FileFailure : public FailingPowerPointTest
{
protected:
    /// Three files, of one, three and one slide: the shapes 2 to 4 are those of the second file.
    FileFailure()
    {
        SetJobOver({u"a.pptx", u"b.pptx", u"c.pptx"});
        Presentation(u"b.pptx", {u"Fabrikam", u"Fabrikam", u"Fabrikam"});
        before_ = ContentOf(PathOf(u"b.pptx"));
    }

    /// The second file stands in the tree with the result of the first, and in the line; nothing of it is changed. The
    /// run has gone on.
    void ExpectSecondFileUntouched()
    {
        EXPECT_TRUE(ContentOf(PathOf(u"b.pptx")) == before_);
        ExpectRunWentOn();
    }

    void ExpectRunWentOn()
    {
        EXPECT_TRUE(IsChanged(u"a.pptx") && IsChanged(u"c.pptx"));
        EXPECT_THAT(Changed(), ElementsAreArray(NodesOf({"a.pptx", "b.pptx", "c.pptx"})));
        EXPECT_THAT(Errors(), IsEmpty());
        EXPECT_EQ(NotProcessed(), "1 file(s) could not be processed or saved. The error log names them.");
        EXPECT_EQ(NotOpened(), "");
        ExpectFinished("Finished: 3 of 3 file(s) changed");
        ExpectNextRunToWork();
    }

private:
    std::string before_;
};

TEST_F(FileFailure, AtAShapeReportsTheFileBeforeOnceMore)
{
    office.script.FailOnce("Shape.Type", 1234, u"scripted", 3);

    Replace();

    EXPECT_THAT(LogLines(), ElementsAre(LineOf("b.pptx", 1234, "scripted", true)));
    EXPECT_EQ(CallsOf("Presentation.Save b.pptx") + CallsOf("Presentation.Close b.pptx"), 0U);
    EXPECT_EQ(CallsOf("CreateApplication"), 1U);
    ExpectSecondFileUntouched();
}

TEST_F(FileFailure, AtAMatchSkipsTheRestOfThatTextOnly)
{
    office.script.FailOnce("TextRange.Replace", -2147418111, u"Call was rejected by callee.", 3);

    Replace();

    EXPECT_THAT(LogLines(),
                ElementsAre("Error -2147418111 (Call was rejected by callee.) in procedure SearchFunction" + inEngine,
                            "b.pptx: slide 1, shape 1 \"Title 1\": its text could not be changed completely: Call was "
                            "rejected by callee."));
    EXPECT_THAT(TextsOf(u"b.pptx"), ElementsAre("Fabrikam", "Contoso", "Contoso"));
    EXPECT_THAT(Changed(), ElementsAre("a.pptx", "\tFabrikam", "\t\tSlides (1)", "b.pptx",
                                       "\tWarning: slide 1, shape 1 \"Title 1\": its text could not be changed "
                                       "completely: Call was rejected by callee.",
                                       "\tFabrikam", "\t\tSlides (2)", "c.pptx", "\tFabrikam", "\t\tSlides (1)"));
    EXPECT_EQ(NotOpened(), "");
    ExpectFinished("Finished: 3 of 3 file(s) changed");
}

TEST_F(FileFailure, AtTheSaveLeavesTheFileUntouched)
{
    office.script.FailOnce("Presentation.Save", FailureNumber::SystemDiskFull, u"The disk is full", 2);

    Replace();

    EXPECT_THAT(LogLines(), ElementsAre(LineOf("b.pptx", FailureNumber::SystemDiskFull, "The disk is full", false)));
    EXPECT_EQ(CallsOf("Presentation.Close b.pptx"), 0U);
    EXPECT_THAT(Failures(), ElementsAre("b.pptx: The disk is full"));
    ExpectSecondFileUntouched();
}

TEST_F(FileFailure, AtTheCloseLeavesTheFileSavedWhole)
{
    office.script.FailOnce("Presentation.Close", -2147417846, u"The application is busy.", 2);

    Replace();

    EXPECT_THAT(TextsOf(u"b.pptx"), ElementsAre("Contoso", "Contoso", "Contoso"));
    EXPECT_THAT(LogLines(), ElementsAre(LineOf("b.pptx", -2147417846, "The application is busy.", false)));
    ExpectRunWentOn();
}

TEST_F(FileFailure, OfTheRevisionIsLoggedAndTheFileIsProcessed)
{
    office.script.FailOnce("Presentation.CustomDocumentProperties", 1234, u"scripted", 2);

    Replace();

    EXPECT_THAT(LogLines(), ElementsAre("Error 1234 (scripted) in procedure UpdateISO9001Version" + inEngine));
    EXPECT_THAT(TextsOf(u"b.pptx"), ElementsAre("Contoso", "Contoso", "Contoso"));
    EXPECT_EQ(NotOpened(), "");
    ExpectFinished("Finished: 3 of 3 file(s) changed");
}

TEST_F(FileFailure, OfTheFirstFileLeavesTheRunAndTellsWhy)
{
    office.script.FailOnce("Shape.Type", 1234, u"scripted");

    Replace();

    EXPECT_THAT(LogLines(), ElementsAre("Error 91 (Object variable or With block variable not set) in procedure "
                                        "Replacement at Line No. 0 of Class Module Project",
                                        LineOf("a.pptx", 1234, "scripted", true)));
    EXPECT_EQ(NotProcessed(), "1 file(s) could not be processed or saved. The error log names them.");
    EXPECT_EQ(NotOpened(), "");
    EXPECT_THAT(Changed(), IsEmpty());
    for (const char16_t* name : {u"a.pptx", u"c.pptx"})
        EXPECT_THAT(TextsOf(name), ElementsAre("Fabrikam"));
    EXPECT_EQ(office.Running(), 1);
    EXPECT_THAT(Failures(), ElementsAre("a.pptx: scripted", "a.pptx: The run ended here: scripted"));
    EXPECT_EQ(Label("lblOutcome"), "Ended by a failure after 0 of 3 file(s). Failures: 2");
    ExpectLeftAt("File 1 of 3: a.pptx");
    ExpectNextRunToWork();
}

TEST_F(FileFailure, OfTheFirstFileInAFindLetsTheTimeGoOn)
{
    office.DieAt("Slides.Next");

    Find();

    EXPECT_THAT(LogLines(), ElementsAre(LineOf("a.pptx", -2147023170, "The remote procedure call failed", true),
                                        "Error 91 (Object variable or With block variable not set) in procedure "
                                        "cmdStartReplacing_Click at Line No. 0 of Form frmMain"));
    EXPECT_EQ(NotProcessed(), "1 file(s) could not be processed or saved. The error log names them.");
    EXPECT_EQ(NotOpened(), "");
    EXPECT_TRUE(Processing().tmrelapsedSecsX->Enabled()) << "only a run that returns stops it";
    EXPECT_TRUE(CurrentProject->options->IsFindOnly);
    ExpectLeftAt("File 1 of 3: a.pptx");
    ExpectNextRunToWork();
}

TEST_F(FileFailure, OfTheLastFileByDeathSkipsTheLastSteps)
{
    office.DieAt("Presentation.Save", 3);

    Replace();

    EXPECT_THAT(LogLines(),
                ElementsAre(LineOf("c.pptx", -2147023170, "The remote procedure call failed", false),
                            "Error 462 (The remote server machine does not exist or is unavailable) in procedure "
                            "Replacement at Line No. 0 of Class Module Project"));
    EXPECT_THAT(TextsOf(u"c.pptx"), ElementsAre("Fabrikam"));
    EXPECT_TRUE(Processing().IsComplited) << "the last file has been reported";
    EXPECT_EQ(Label("lblDocChanged"), "Finished: 3 of 3 file(s) changed");
    EXPECT_EQ(messages.Pointers().back(), MousePointer::Hourglass);
    ExpectNextRunToWork();
}

TEST_F(FileFailure, AfterASkippedFileIsToldBesideTheRepeatedError)
{
    SetMode(PathOf(u"a.pptx"), 0444);
    office.script.FailOnce("Shape.Type", 1234, u"scripted");

    Replace();

    EXPECT_THAT(Errors(), ElementsAre("a.pptx", "\tRead Only File.", "b.pptx", "\tRead Only File."));
    EXPECT_EQ(NotProcessed(), "1 file(s) could not be processed or saved. The error log names them.");
    EXPECT_EQ(NotOpened(), "");
    EXPECT_THAT(LogLines(), ElementsAre(LineOf("b.pptx", 1234, "scripted", true)));
    ExpectFinished("Finished: 1 of 3 file(s) changed");
}

TEST_F(FileFailure, OfAReplacementLetsTheNextFindSaveItsChanges)
{
    office.script.FailOnce("Shape.Type", 1234, u"scripted");
    Replace();
    EXPECT_FALSE(CurrentProject->options->IsFindOnly);

    Find();

    // Intended: only the end of a replacement sets the flag again, and this one had none.
    EXPECT_TRUE(IsChanged(u"a.pptx") && IsChanged(u"c.pptx"));
    EXPECT_EQ(Label("lblDocChanged"), "Finished: matches in 3 of 3 file(s)");
}

}  // namespace
}  // namespace tessarine
