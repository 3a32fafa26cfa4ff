#include "platform/Files.h"
#include "ui/main/FailingPowerPointTest.h"

// Files that fail to open in a run from the main window: what the run does by the number of the failure, and what the
// person sees of it.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr const char* noResult =
    "Error 91 (Object variable or With block variable not set) in procedure mProject_AfterFileProcess at Line No. 0 of "
    "Form frmMain";

struct Number {
    const char* name;
    std::int32_t number;
};

std::string NameOf(const testing::TestParamInfo<Number>& parameter)
{
    return parameter.param.name;
}

class NumberedOpenFailure : public FailingPowerPointTest, public testing::WithParamInterface<Number>
{
protected:
    /// The `nth` open fails.
    void FailOpen(int nth) { office.script.FailOnce("Presentations.Open", GetParam().number, u"scripted", nth); }

    std::string Line(const std::string& file) const
    {
        return "Error " + std::to_string(GetParam().number) + " (scripted) in file " + file;
    }
};

// --- Two runs in one window -----------------------------------------------------------------------------------------

using OpenFailure = FailingPowerPointTest;

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

// --- PowerPoint has gone ---------------------------------------------------------------------------------------------

using ServerGoneAtOpen = NumberedOpenFailure;

TEST_P(ServerGoneAtOpen, OpensTheFileAgainOnANewPowerPointAndShowsNothingOfIt)
{
    SetJobOver({u"a.pptx", u"b.pptx", u"c.pptx"});
    FailOpen(2);

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

INSTANTIATE_TEST_SUITE_P(Numbers, ServerGoneAtOpen,
                         testing::Values(Number{"ServerGone", 462}, Number{"RemoteCallFailed", -2147023170}), NameOf);

TEST_F(FailingPowerPointTest, APowerPointThatDiesTwentyTimesAtOneFileIsStartedTwentyTimesAgain)
{
    SetJobOver({u"a.pptx", u"b.pptx"});
    for (int attempt = 1; attempt <= 20; ++attempt)
        office.DieAt("Presentations.Open", attempt);

    Replace();

    EXPECT_EQ(CallsOf("CreateApplication"), 21U);
    EXPECT_EQ(CallsOf("Presentations.Open a.pptx"), 21U);
    EXPECT_EQ(CallsOf("Presentations.Open b.pptx"), 1U);
    EXPECT_TRUE(IsChanged(u"a.pptx") && IsChanged(u"b.pptx"));
    EXPECT_THAT(Log(), IsEmpty());
    ExpectFinished("Finished: 2 of 2 file(s) changed");
}

// --- Taken for a wrong password --------------------------------------------------------------------------------------

using PasswordAtOpen = NumberedOpenFailure;

TEST_P(PasswordAtOpen, PutsTheFileAmongTheErrorsAndGoesOn)
{
    SetJobOver({u"a.pptx", u"b.pptx", u"c.pptx"});
    const std::string before = ContentOf(PathOf(u"b.pptx"));
    FailOpen(2);

    Replace();

    EXPECT_THAT(Errors(), ElementsAre("b.pptx", "\t  Wrong Password has been supplied."));
    EXPECT_THAT(Changed(), ElementsAreArray(NodesOf({"a.pptx", "c.pptx"})));
    EXPECT_EQ(NotOpened(), "") << "the tree tells of it";
    EXPECT_TRUE(ContentOf(PathOf(u"b.pptx")) == before);
    EXPECT_THAT(Log(), IsEmpty());
    ExpectFinished("Finished: 2 of 3 file(s) changed");
    ExpectNextRunToWork();
}

INSTANTIATE_TEST_SUITE_P(Numbers, PasswordAtOpen,
                         testing::Values(Number{"ApplicationDefined", 1004}, Number{"Unspecified", -2147467259}),
                         NameOf);

// --- Any other number ------------------------------------------------------------------------------------------------

using UnknownOpenFailure = NumberedOpenFailure;

TEST_P(UnknownOpenFailure, OfTheFirstFileLeavesItOutOfTheTreesAndCountsItInALine)
{
    SetJobOver({u"a.pptx", u"b.pptx"});
    const std::string before = ContentOf(PathOf(u"a.pptx"));
    FailOpen(1);

    Replace();

    EXPECT_THAT(Changed(), ElementsAreArray(NodesOf({"b.pptx"})));
    EXPECT_THAT(Unchanged(), IsEmpty());
    EXPECT_THAT(Errors(), IsEmpty());
    EXPECT_EQ(NotOpened(), "1 file(s) could not be opened. The error log names them.");
    EXPECT_THAT(LogLines(), ElementsAre("scripted", Line("a.pptx"), noResult));
    EXPECT_TRUE(ContentOf(PathOf(u"a.pptx")) == before);
    ExpectFinished("Finished: 1 of 2 file(s) changed");
    ExpectNextRunToWork();
}

TEST_P(UnknownOpenFailure, OfALaterFileReportsTheFileBeforeOnceMoreAndCountsItInALine)
{
    SetJobOver({u"a.pptx", u"b.pptx", u"c.pptx"});
    const std::string before = ContentOf(PathOf(u"b.pptx"));
    FailOpen(2);

    Replace();

    EXPECT_THAT(Changed(), ElementsAre("a.pptx", "\tFabrikam", "\t\tSlides (1)", "\tFabrikam", "\t\tSlides (1)",
                                       "c.pptx", "\tFabrikam", "\t\tSlides (1)"));
    EXPECT_EQ(Label("lblChangesMade"), "Change(s) made: 3") << "those of the first file twice";
    EXPECT_EQ(NotOpened(), "1 file(s) could not be opened. The error log names them.");
    EXPECT_THAT(LogLines(), ElementsAre("scripted", Line("b.pptx")));
    EXPECT_TRUE(ContentOf(PathOf(u"b.pptx")) == before);
    ExpectFinished("Finished: 2 of 3 file(s) changed");
    ExpectNextRunToWork();
}

INSTANTIATE_TEST_SUITE_P(Numbers, UnknownOpenFailure,
                         testing::Values(Number{"CallRejected", -2147418111}, Number{"Busy", -2147417846},
                                         Number{"FileCorrupt", FailureNumber::FileCorrupt},
                                         Number{"OutOfMemory", FailureNumber::SystemOutOfMemory},
                                         Number{"Overflow", FailureNumber::Overflow}),
                         NameOf);

TEST_F(FailingPowerPointTest, FilesThatFailToOpenOneAfterTheOtherAreCountedAndNamedEach)
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

TEST_F(FailingPowerPointTest, ALastFileThatFailsToOpenEndsTheRunAllTheSame)
{
    SetJobOver({u"a.pptx", u"b.pptx"});
    office.script.FailOnce("Presentations.Open", 1234, u"scripted", 2);

    Find();

    EXPECT_THAT(LogLines(), ElementsAre("scripted", "Error 1234 (scripted) in file b.pptx"));
    ExpectFinished("Finished: matches in 1 of 2 file(s)");
}

// --- What the file keeps ---------------------------------------------------------------------------------------------

class ReadOnlyFile : public FailingPowerPointTest
{
protected:
    /// A read-only file and another behind it, with the box on that has such files processed.
    void SetJobOverReadOnlyFile()
    {
        SetJobOver({u"a.pptx", u"b.pptx"});
        SetMode(PathOf(u"a.pptx"), 0444);
        ShowTab(2);
        ClickBox("chkReadOnlyFile");
    }

    bool IsReadOnly(StringView name) const { return GetAttributes(PathOf(name)).bits % 2 == 1; }
};

TEST_F(ReadOnlyFile, StaysWritableWhenItFailsToOpen)
{
    SetJobOverReadOnlyFile();
    office.script.FailOnce("Presentations.Open", 1004, u"scripted");

    Replace();

    EXPECT_FALSE(IsReadOnly(u"a.pptx"));
    EXPECT_THAT(Errors(), ElementsAre("a.pptx", "\t  Wrong Password has been supplied."));
    ExpectFinished("Finished: 1 of 2 file(s) changed");
}

TEST_F(ReadOnlyFile, IsReadOnlyAgainWhenItOpensOnANewPowerPoint)
{
    SetJobOverReadOnlyFile();
    office.DieAt("Presentations.Open");

    Replace();

    EXPECT_TRUE(IsReadOnly(u"a.pptx"));
    EXPECT_TRUE(IsChanged(u"a.pptx"));
    ExpectFinished("Finished: 2 of 2 file(s) changed");
}

}  // namespace
}  // namespace tessarine
