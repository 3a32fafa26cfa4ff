#include "batch/QuietReport.h"

#include <gtest/gtest.h>

#include "batch/ReportFormats.h"
#include "ReportTest.h"

namespace tessarine::batch
{
namespace
{

BatchCall QuietCall(Command command)
{
    BatchCall call;
    call.command = command;
    call.quiet = true;
    call.setting = StyleOf(command).setting;
    return call;
}

TEST(QuietReport, TellsOfFailuresAndWarningsAlone)
{
    const auto report = CreateReport(QuietCall(Command::Replace), false);
    const FileReport changed{u"a.pptx", FileStatus::Counted, {}, {Pair(u"cat", u"dog", 2, 0)}};
    FileReport warned = changed;
    warned.warnings = {u"It is marked as final."};

    EXPECT_EQ(report->AtStart(Engine::BuiltIn), "");
    EXPECT_EQ(report->OfFile(changed), "");
    EXPECT_EQ(report->OfFile(FailedFile(u"b.pptx", u"File not found.")), "b.pptx: failed: File not found.\n");
    EXPECT_EQ(report->OfFile(warned),
              "a.pptx: changed, 2 replaced\n"
              "    \"cat\" -> \"dog\"  slides 2\n"
              "    warning: It is marked as final.\n");
    EXPECT_EQ(report->AtEnd(RunSummary()), "");
}

TEST(QuietReport, TellsOfBackupsThatFailedAlone)
{
    const auto report = CreateReport(QuietCall(Command::Restore), false);

    EXPECT_EQ(report->OfFile(BackupReport{FileStatus::Counted, u"a.pptx", u"a..bak", {}}), "");
    EXPECT_EQ(report->OfFile(BackupReport{FileStatus::NotProcessed, u"a.pptx", {}, u"no"}), "a.pptx: failed: no\n");
    EXPECT_EQ(report->AtEnd(BackupSummary()), "");
}

TEST(QuietReport, LeavesReportsForProgramsAsTheyAre)
{
    BatchCall call = QuietCall(Command::Find);
    call.format = ReportFormatNamed("json");
    BatchCall loud = call;
    loud.quiet = false;
    const FileReport found{u"a.pptx", FileStatus::Counted, {}, {Pair(u"cat", {}, 2, 0)}};

    EXPECT_EQ(CreateReport(call, false)->OfFile(found), CreateReport(loud, false)->OfFile(found));
    EXPECT_NE(CreateReport(call, false)->OfFile(found), "");
}

}  // namespace
}  // namespace tessarine::batch
