#include "batch/BackupCommands.h"

#include <gtest/gtest.h>

#include "engine/CounterStatus.h"
#include "support/TemporaryFolder.h"

namespace tessarine::batch
{
namespace
{

class BackupCommandsTest : public testing::Test
{
protected:
    std::string Content(StringView name) { return ContentOf(folder.PathOf(name)); }

    BackupOwners Owners() const
    {
        BatchCall call;
        call.patterns = {u"*.ppt*"};
        return {call, named};
    }

    BackupReport Restore(const String& path) const { return RestoreFile(path, Owners()); }
    BackupReport Clean(const String& path) const { return RemoveBackup(path, Owners()); }

    TemporaryFolder folder;
    std::vector<JobFile> named;
};

TEST_F(BackupCommandsTest, RestoreBringsTheFileBackAndKeepsTheBackup)
{
    const String file = folder.Write(u"a.pptx", "PK new");
    folder.Write(u"a..bak", "PK old");

    const BackupReport report = Restore(file);

    EXPECT_EQ(report.status, FileStatus::Counted);
    EXPECT_EQ(report.backup, folder.PathOf(u"a..bak"));
    EXPECT_EQ(Content(u"a.pptx"), "PK old");
    EXPECT_EQ(Content(u"a..bak"), "PK old");
}

TEST_F(BackupCommandsTest, RestoreBringsBackAnExtensionOfThreeLetters)
{
    const String file = folder.Write(u"a.ppt", "new");
    folder.Write(u"a.bak", "old");

    EXPECT_EQ(Restore(file).status, FileStatus::Counted);
    EXPECT_EQ(Content(u"a.ppt"), "old");
}

TEST_F(BackupCommandsTest, RestoreBringsBackALostFile)
{
    folder.Write(u"a..bak", "old");

    EXPECT_EQ(Restore(folder.PathOf(u"a.pptx")).status, FileStatus::Counted);
    EXPECT_EQ(Content(u"a.pptx"), "old");
}

TEST_F(BackupCommandsTest, AFileWithoutABackupIsLeftAlone)
{
    const String file = folder.Write(u"a.pptx", "new");

    const BackupReport report = Restore(file);

    EXPECT_EQ(report.status, FileStatus::NothingCounted);
    EXPECT_EQ(report.backup, u"");
    EXPECT_EQ(Content(u"a.pptx"), "new");
}

TEST_F(BackupCommandsTest, AMissingFileWithoutABackupFails)
{
    const BackupReport report = Restore(folder.PathOf(u"a.pptx"));

    EXPECT_EQ(report.status, FileStatus::NotProcessed);
    EXPECT_EQ(report.error, u"File not found.");
}

TEST_F(BackupCommandsTest, TakesTheDesktopsBackupWhenThereIsNoOther)
{
    const String file = folder.Write(u"a.pptx", "PK\x03\x04 new");
    folder.Write(u"a.bak", "PK\x03\x04 old");

    EXPECT_EQ(Restore(file).backup, folder.PathOf(u"a.bak"));
    EXPECT_EQ(Content(u"a.pptx"), "PK\x03\x04 old");
}

TEST_F(BackupCommandsTest, PutsNoBinaryBackupOverAPackage)
{
    const String file = folder.Write(u"a.pptx", "PK\x03\x04 new");
    folder.Write(u"a.bak", "\xD0\xCF\x11\xE0 old");

    EXPECT_EQ(Restore(file).status, FileStatus::NothingCounted);
    EXPECT_EQ(Content(u"a.pptx"), "PK\x03\x04 new");
}

TEST_F(BackupCommandsTest, PutsNoNeighboursBackupOverAFile)
{
    const String file = folder.Write(u"a.pptx", "PK\x03\x04 new");
    folder.Write(u"a.ppt", "PK\x03\x04 in truth");
    folder.Write(u"a.bak", "PK\x03\x04 old");

    EXPECT_EQ(Restore(file).status, FileStatus::NothingCounted);
}

TEST_F(BackupCommandsTest, TouchesNoBackupThatTwoFilesMayOwn)
{
    const String file = folder.Write(u"a.pptx", "new");
    folder.Write(u"a.pptm", "macros");
    folder.Write(u"a..bak", "old");

    const BackupReport restored = Restore(file);
    const BackupReport removed = Clean(file);

    EXPECT_EQ(restored.status, FileStatus::NotProcessed);
    EXPECT_NE(restored.error.find(folder.PathOf(u"a.pptm")), String::npos);
    EXPECT_EQ(removed.status, FileStatus::NotProcessed);
    EXPECT_EQ(Content(u"a.pptx"), "new");
    EXPECT_EQ(Content(u"a..bak"), "old");
}

TEST_F(BackupCommandsTest, ANeighbourOutsideTheCallOwnsNoBackup)
{
    const String file = folder.Write(u"a.pptx", "new");
    const String show = folder.Write(u"a.ppsx", "show");
    folder.Write(u"a..bak", "old");

    EXPECT_EQ(Restore(file).status, FileStatus::Counted);
    named.push_back({show, {}});
    EXPECT_EQ(Restore(file).status, FileStatus::NotProcessed);
}

TEST_F(BackupCommandsTest, CleanDeletesTheBackupAndKeepsTheFile)
{
    const String file = folder.Write(u"a.pptx", "new");
    folder.Write(u"a..bak", "old");

    const BackupReport report = Clean(file);

    EXPECT_EQ(report.status, FileStatus::Counted);
    EXPECT_EQ(Content(u"a.pptx"), "new");
    EXPECT_EQ(Content(u"a..bak"), "<missing>");
}

TEST_F(BackupCommandsTest, AFileIsNeverItsOwnBackup)
{
    const String file = folder.Write(u"a.bak", "content");

    EXPECT_EQ(Clean(file).status, FileStatus::NothingCounted);
    EXPECT_EQ(Content(u"a.bak"), "content");
}

TEST(BackupSummary, CountsEachFileOnce)
{
    BackupSummary summary;
    for (const std::int32_t status : {1, 2, 2, 0, 1, 1})
        summary.Add({status, u"a", {}, {}});

    EXPECT_EQ(summary.files, 6);
    EXPECT_EQ(summary.done, 3);
    EXPECT_EQ(summary.unchanged, 2);
    EXPECT_EQ(summary.failed, 1);
}

}  // namespace
}  // namespace tessarine::batch
