#include "ui/main/FailingPowerPointTest.h"

// Files that fail to open in a run from the main window: what the person sees of it. What the run does by the number of
// the failure is tested with the runs.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

class OpenFailure : public FailingPowerPointTest
{
protected:
    /// The `nth` open fails.
    void FailOpen(std::int32_t number, int nth)
    {
        office.script.FailOnce("Presentations.Open", number, u"scripted", nth);
    }

    static std::string Line(std::int32_t number, const std::string& file)
    {
        return "Error " + std::to_string(number) + " (scripted) in file " + file;
    }
};

TEST_F(OpenFailure, IsCountedAndLoggedAnewByEachRunInAWindow)
{
    SetJobOver({u"1.pptx", u"2.pptx"});
    office.script.FailOnce("Presentations.Open", 70, u"first reason", 2);
    Find();
    office.script.FailOnce("Presentations.Open", 75, u"second reason", 2);
    Find();

    EXPECT_EQ(NotOpened(), "1 file(s) could not be opened. The error log names them.");
    EXPECT_THAT(LogLines(), testing::Contains("Error 75 (second reason) in file 2.pptx"));

    Find();

    EXPECT_EQ(NotOpened(), "");
}

TEST_F(OpenFailure, OfAServerThatHasGoneShowsNothing)
{
    SetJobOver({u"a.pptx", u"b.pptx", u"c.pptx"});
    FailOpen(FailureNumber::ServerGone, 2);

    Replace();

    EXPECT_TRUE(IsChanged(u"a.pptx") && IsChanged(u"b.pptx") && IsChanged(u"c.pptx"));
    EXPECT_THAT(Changed(), ElementsAreArray(NodesOf({"a.pptx", "b.pptx", "c.pptx"})));
    EXPECT_THAT(Errors(), IsEmpty());
    EXPECT_EQ(NotOpened(), "");
    EXPECT_EQ(Label("lblChangesMade"), "Change(s) made: 3");
    EXPECT_EQ(CallsOf("CreateApplication"), 2U);
    EXPECT_THAT(Log(), IsEmpty());
    ExpectFinished("Finished: 3 of 3 file(s) changed");
    ExpectNextRunToWork();
}

TEST_F(OpenFailure, TakenForAPasswordPutsTheFileAmongTheErrors)
{
    SetJobOver({u"a.pptx", u"b.pptx", u"c.pptx"});
    const std::string before = ContentOf(PathOf(u"b.pptx"));
    FailOpen(FailureNumber::ApplicationDefined, 2);

    Replace();

    EXPECT_THAT(Errors(), ElementsAre("b.pptx", "\t  Wrong Password has been supplied."));
    EXPECT_THAT(Changed(), ElementsAreArray(NodesOf({"a.pptx", "c.pptx"})));
    EXPECT_EQ(NotOpened(), "") << "the tree tells of it";
    EXPECT_TRUE(ContentOf(PathOf(u"b.pptx")) == before);
    EXPECT_THAT(Log(), IsEmpty());
    ExpectFinished("Finished: 2 of 3 file(s) changed");
    ExpectNextRunToWork();
}

TEST_F(OpenFailure, OfTheFirstFileLeavesItOutOfTheTrees)
{
    SetJobOver({u"a.pptx", u"b.pptx"});
    const std::string before = ContentOf(PathOf(u"a.pptx"));
    FailOpen(FailureNumber::FileCorrupt, 1);

    Replace();

    EXPECT_THAT(Changed(), ElementsAreArray(NodesOf({"b.pptx"})));
    EXPECT_THAT(Unchanged(), IsEmpty());
    EXPECT_THAT(Errors(), IsEmpty());
    EXPECT_EQ(NotOpened(), "1 file(s) could not be opened. The error log names them.");
    EXPECT_THAT(LogLines(), ElementsAre("scripted", Line(FailureNumber::FileCorrupt, "a.pptx"), noResult));
    EXPECT_TRUE(ContentOf(PathOf(u"a.pptx")) == before);
    ExpectFinished("Finished: 1 of 2 file(s) changed");
    ExpectNextRunToWork();
}

TEST_F(OpenFailure, OfALaterFileReportsTheFileBeforeOnceMore)
{
    SetJobOver({u"a.pptx", u"b.pptx", u"c.pptx"});
    const std::string before = ContentOf(PathOf(u"b.pptx"));
    FailOpen(FailureNumber::FileCorrupt, 2);

    Replace();

    EXPECT_THAT(Changed(), ElementsAre("a.pptx", "\tFabrikam", "\t\tSlides (1)", "\tFabrikam", "\t\tSlides (1)",
                                       "c.pptx", "\tFabrikam", "\t\tSlides (1)"));
    EXPECT_EQ(Label("lblChangesMade"), "Change(s) made: 3") << "those of the first file twice";
    EXPECT_EQ(NotOpened(), "1 file(s) could not be opened. The error log names them.");
    EXPECT_THAT(LogLines(), ElementsAre("scripted", Line(FailureNumber::FileCorrupt, "b.pptx")));
    EXPECT_TRUE(ContentOf(PathOf(u"b.pptx")) == before);
    ExpectFinished("Finished: 2 of 3 file(s) changed");
    ExpectNextRunToWork();
}

TEST_F(OpenFailure, OfTwoFilesInARowCountsAndNamesEach)
{
    SetJobOver({u"a.pptx", u"b.pptx", u"c.pptx"});
    office.script.FailOnce("Presentations.Open", 1234, u"first", 1);
    office.script.FailOnce("Presentations.Open", 1235, u"second", 2);

    Find();

    EXPECT_EQ(NotOpened(), "2 file(s) could not be opened. The error log names them.");
    EXPECT_THAT(LogLines(), ElementsAre("first", "Error 1234 (first) in file a.pptx", noResult, "second",
                                        "Error 1235 (second) in file b.pptx", noResult));
    EXPECT_THAT(Changed(), ElementsAreArray(NodesOf({"c.pptx"})));
    ExpectFinished("Finished: matches in 1 of 3 file(s)");
}

TEST_F(OpenFailure, OfTheLastFileEndsTheRunAllTheSame)
{
    SetJobOver({u"a.pptx", u"b.pptx"});
    office.script.FailOnce("Presentations.Open", 1234, u"scripted", 2);

    Find();

    EXPECT_THAT(LogLines(), ElementsAre("scripted", "Error 1234 (scripted) in file b.pptx"));
    ExpectFinished("Finished: matches in 1 of 2 file(s)");
}

}  // namespace
}  // namespace tessarine
