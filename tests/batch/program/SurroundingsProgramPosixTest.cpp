#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/program/ProgramPosix.h"
#include "files/Files.h"
#include "log/ErrorLog.h"
#include "support/Deck.h"
#include "support/KilledRun.h"

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;
using testing::StartsWith;

TEST(SurroundingsProgramTest, FailuresStandInTheErrorLogToo)
{
    Program program;
    program.folder.Write(u"a.pptx", "not a presentation");

    program.Run({"find", "--find", "x", "a.pptx"});

    EXPECT_THAT(program.Log(), HasSubstr("a.pptx"));
}

TEST(SurroundingsProgramTest, WithoutAPlaceForTheLogTheRunGoesOn)
{
    Program program;
    program.environment["XDG_DATA_HOME"] = "/dev/null/nowhere";
    program.folder.Write(u"a.pptx", Deck().Slide(Title(u"Fabrikam")).Bytes());
    program.folder.Write(u"b.pptx", "not a presentation");

    const Outcome outcome = program.Run({"find", "--find", "Fabrikam", "a.pptx", "b.pptx"});

    EXPECT_THAT(outcome.output, HasSubstr("2 files: 1 with hits, 0 without, 1 failed; 1 occurrence found\n"));
    EXPECT_EQ(outcome.status, 1);
}

TEST(SurroundingsProgramTest, ALogThatIsAPipeHoldsUpNothingAndIsTold)
{
    Program program;
    program.folder.Write(u"a.pptx", "not a presentation");
    program.folder.MakeFolder(u".data/Tessarine/Tessarine");
    const std::string log = ToUtf8(program.folder.PathOf(u".data/Tessarine/Tessarine/Errors.Log"));
    ASSERT_EQ(mkfifo(log.c_str(), 0600), 0);

    const Outcome outcome = program.Run({"find", "--find", "x", "a.pptx"});

    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.error,
              "tessarine-batch: the error log lacks lines: Permission denied: could not write (it is not a file) " +
                  log + "\n");
}

TEST(SurroundingsProgramTest, WhatAKilledRunLeftIsPutRightAndTold)
{
    Program program;
    const String deck = program.folder.Write(u"a.pptx", Deck().Slide(Title(u"Fabrikam")).Bytes());
    SetMode(deck, 0444);
    const String before = ApplicationDataFolder;
    ApplicationDataFolder = program.folder.MakeFolder(u".data/Tessarine/Tessarine");
    LeaveWritable(deck);
    ApplicationDataFolder = before;
    ASSERT_EQ(ModeOf(deck), 0644u);

    const Outcome outcome = program.Run({"find", "--find", "Fabrikam", "--read-only", "a.pptx"});

    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.error, "tessarine-batch: " + ToUtf8(deck) +
                                 ": a run that was killed had left it writable; its mode is put back\n");
    EXPECT_EQ(ModeOf(deck), 0444u);
    EXPECT_EQ(program.Run({"find", "--find", "Fabrikam", "--read-only", "a.pptx"}).error, "");
}

TEST(SurroundingsProgramTest, AnUnwritableReportShowsInTheExitStatus)
{
    Program program;
    program.folder.Write(u"a.pptx", Deck().Slide(Title(u"Fabrikam")).Bytes());

    const Outcome outcome = RunInto(program, "/dev/full", {"find", "--find", "Fabrikam", "a.pptx"});

    EXPECT_EQ(outcome.error, "tessarine-batch: the report could not be written completely\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST(SurroundingsProgramTest, AReportThatNobodyReadsEndsTheRunAfterTheFileInHand)
{
    Program program;
    for (const auto* name : {u"a.pptx", u"b.pptx", u"c.pptx"})
        program.folder.Write(name, Deck().Slide(Title(u"Fabrikam")).Bytes());
    const std::string before = ContentOf(program.folder.PathOf(u"a.pptx"));
    int ends[2] = {-1, -1};
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    close(ends[0]);
    const int error = open(ToUtf8(program.folder.Write(u".error", "")).c_str(), O_RDWR | O_CLOEXEC);

    const int status =
        WaitFor(Start(program, {"replace", "--find", "Fabrikam", "--with", "Contoso", "."}, error, ends[1], error));
    close(ends[1]);
    close(error);

    EXPECT_EQ(ContentOf(program.folder.PathOf(u".error")),
              "tessarine-batch: nobody reads the report any more; the last file was ./a.pptx: changed\n"
              "tessarine-batch: cancelled; 2 files were not processed\n"
              "tessarine-batch: the report could not be written completely\n");
    EXPECT_EQ(status, 1);
    EXPECT_NE(ContentOf(program.folder.PathOf(u"a.pptx")), before);
    EXPECT_EQ(ContentOf(program.folder.PathOf(u"b.pptx")), before);
    EXPECT_EQ(ContentOf(program.folder.PathOf(u"c.pptx")), before);
}

TEST(SurroundingsProgramTest, AFileThatMayNotGrowFailsAndTheRunGoesOn)
{
    Program program;
    const std::string large = Deck().Slide(Title(u"Fabrikam")).Media("x.bin", 200000, 1).Bytes();
    program.folder.Write(u"a.pptx", large);
    program.folder.Write(u"b.pptx", Deck().Slide(Title(u"Fabrikam")).Bytes());
    program.fileSizeLimit = 100000;

    const Outcome outcome = program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "a.pptx", "b.pptx"});

    EXPECT_THAT(outcome.output, HasSubstr("a.pptx: failed: "));
    EXPECT_THAT(outcome.output, HasSubstr("2 files: 1 changed, 0 unchanged, 1 failed; 1 occurrence replaced\n"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(ContentOf(program.folder.PathOf(u"a.pptx")), large);
}

TEST(SurroundingsProgramTest, APipeAsListOfFilesIsRefusedAtOnce)
{
    Program program;
    program.folder.Write(u"a.pptx", Deck().Slide(Title(u"Fabrikam")).Bytes());
    ASSERT_EQ(mkfifo(ToUtf8(program.folder.PathOf(u"list")).c_str(), 0600), 0);

    for (const auto* name : {u"list.csv", u"list.tsq"})
        ASSERT_EQ(mkfifo(ToUtf8(program.folder.PathOf(name)).c_str(), 0600), 0);

    for (const std::vector<std::string>& call :
         {std::vector<std::string>{"find", "--find", "x", "--files-from", "list"},
          {"find", "--list", "list.csv", "."},
          {"run", "list.tsq"}}) {
        const Outcome outcome = program.Run(call);
        EXPECT_EQ(outcome.status, 2) << call.front();
        EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 1) << outcome.error;
    }
}

TEST(SurroundingsProgramTest, HelpAndVersionNeedNothing)
{
    Program program;

    EXPECT_THAT(program.Run({"--help"}).output, StartsWith("Find and replace text in many presentations"));
    EXPECT_THAT(program.Run({"--version"}).output, StartsWith("tessarine-batch "));
    EXPECT_EQ(program.Run({"replace", "--help"}).status, 0);
    EXPECT_EQ(program.Run({}).status, 2);
    EXPECT_EQ(ContentOf(program.folder.PathOf(u".data/Tessarine/Tessarine/Errors.Log")), "<missing>");
}

}  // namespace
}  // namespace tessarine::test
