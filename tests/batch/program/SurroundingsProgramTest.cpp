#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/program/Program.h"
#include "support/Deck.h"

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

    EXPECT_THAT(ContentOf(program.folder.PathOf(u".data/Tessarine/Tessarine/Errors.Log")), HasSubstr("a.pptx"));
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

TEST(SurroundingsProgramTest, AnUnwritableReportShowsInTheExitStatus)
{
    Program program;
    program.folder.Write(u"a.pptx", Deck().Slide(Title(u"Fabrikam")).Bytes());

    const Outcome outcome = program.RunInto("/dev/full", {"find", "--find", "Fabrikam", "a.pptx"});

    EXPECT_EQ(outcome.error, "tessarine-batch: the report could not be written completely\n");
    EXPECT_EQ(outcome.status, 1);
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
