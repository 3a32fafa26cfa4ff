#include "batch/BackupCommands.h"

#include <filesystem>
#include <span>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/CounterStatus.h"
#include "files/Files.h"
#include "platform/Crc32.h"
#include "run/BackupFolder.h"
#include "support/TemporaryFolder.h"

namespace tessarine::batch
{
namespace
{

using testing::ElementsAre;

class BackupCommandsTest : public testing::Test
{
protected:
    BackupCommandsTest() { call.patterns = {u"*.ppt*"}; }

    std::string Content(StringView name) { return tessarine::ContentOf(folder.PathOf(name)); }

    BackupReport Restore(const String& path) const { return BackupCommands(call, named).Restore(path); }
    BackupReport Clean(const String& path) const { return BackupCommands(call, named).Clean(path); }

    /// Writes a backup as a run leaves it: with its line in the record.
    void WriteBackup(const String& name, const String& original, const std::string& content)
    {
        folder.Write(name, content);
        BackupFolder backups(folder.Path() + u"/");
        backups.Record(name, backups.OriginalAt(folder.PathOf(original)),
                       {content.size(), Crc32(std::as_bytes(std::span(content)))});
    }

    TemporaryFolder folder;
    BatchCall call;
    std::vector<JobFile> named;
};

TEST_F(BackupCommandsTest, RestoreBringsTheFileBackAndKeepsTheBackup)
{
    const String file = folder.Write(u"a.pptx", "PK new");
    WriteBackup(u"a..bak", u"a.pptx", "PK old");

    const BackupReport report = Restore(file);

    EXPECT_EQ(report.status, FileStatus::Counted);
    EXPECT_EQ(report.backup, folder.PathOf(u"a..bak"));
    EXPECT_EQ(report.error, u"");
    EXPECT_EQ(Content(u"a.pptx"), "PK old");
    EXPECT_EQ(Content(u"a..bak"), "PK old");
}

TEST_F(BackupCommandsTest, RestoreBringsBackAnExtensionOfThreeLetters)
{
    const String file = folder.Write(u"a.ppt", "new");
    WriteBackup(u"a.bak", u"a.ppt", "old");

    EXPECT_EQ(Restore(file).status, FileStatus::Counted);
    EXPECT_EQ(Content(u"a.ppt"), "old");
}

TEST_F(BackupCommandsTest, RestoreBringsBackALostFile)
{
    WriteBackup(u"a..bak", u"a.pptx", "old");

    EXPECT_EQ(Restore(folder.PathOf(u"a.pptx")).status, FileStatus::Counted);
    EXPECT_EQ(Content(u"a.pptx"), "old");
}

TEST_F(BackupCommandsTest, RestoreTakesTheNewestNumber)
{
    const String file = folder.Write(u"a.pptx", "new");
    WriteBackup(u"a..bak", u"a.pptx", "first");
    WriteBackup(u"a..bak.10", u"a.pptx", "tenth");
    WriteBackup(u"a..bak.9", u"a.pptx", "ninth");
    folder.Write(u"a..bak.11", "somebody's");

    EXPECT_EQ(Restore(file).backup, folder.PathOf(u"a..bak.10"));
    EXPECT_EQ(Content(u"a.pptx"), "tenth");
}

TEST_F(BackupCommandsTest, RestoreTakesOnlyWhatTheRecordKnows)
{
    const String file = folder.Write(u"a.pptx", "new");
    folder.Write(u"a..bak", "old");

    const BackupReport report = Restore(file);

    EXPECT_EQ(report.status, FileStatus::NotProcessed);
    EXPECT_EQ(report.error, u"The file " + folder.PathOf(u"a..bak") +
                                u" was not made by this version of tessarine-batch (--any-backup takes it all the "
                                u"same).");
    EXPECT_EQ(Content(u"a.pptx"), "new");
}

TEST_F(BackupCommandsTest, RestoreLeavesAChangedBackupAlone)
{
    const String file = folder.Write(u"a.pptx", "new");
    WriteBackup(u"a..bak", u"a.pptx", "old");
    folder.Write(u"a..bak", "OLD");  // as long as before

    const BackupReport report = Restore(file);

    EXPECT_EQ(report.error, u"The file " + folder.PathOf(u"a..bak") +
                                u" has been changed since tessarine-batch made it (--any-backup takes it all the "
                                u"same).");
    EXPECT_EQ(Content(u"a.pptx"), "new");
}

TEST_F(BackupCommandsTest, AFileInUseIsNeitherRestoredNorCleaned)
{
    const String file = folder.Write(u"a.pptx", "new");
    WriteBackup(u"a..bak", u"a.pptx", "old");
    folder.Write(u"~$a.pptx", "somebody");

    for (const BackupReport& report : {Restore(file), Clean(file)}) {
        EXPECT_EQ(report.status, FileStatus::NotProcessed);
        EXPECT_NE(report.error.find(u"is in use"), String::npos);
        // The report names the file already.
        EXPECT_EQ(report.error.find(file), String::npos) << ToUtf8(report.error);
    }
    EXPECT_EQ(Content(u"a.pptx"), "new");
    EXPECT_EQ(Content(u"a..bak"), "old");
}

TEST_F(BackupCommandsTest, RestoreLeavesAReadOnlyFileAloneUnlessAskedNotTo)
{
    const String file = folder.Write(u"a.pptx", "new");
    WriteBackup(u"a..bak", u"a.pptx", "old");
    SetMode(file, 0444);

    EXPECT_EQ(Restore(file).error, u"Read Only File.");
    EXPECT_EQ(Content(u"a.pptx"), "new");
    call.readOnly = true;
    EXPECT_EQ(Restore(file).status, FileStatus::Counted);
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
    EXPECT_EQ(Restore(folder.PathOf(u"a.pptx")).error, u"File not found.");
    EXPECT_EQ(Restore(folder.PathOf(u"gone/a.pptx")).error, u"File not found.");
}

TEST_F(BackupCommandsTest, ANeighboursBackupIsNobodyElses)
{
    const String file = folder.Write(u"a.pptx", "new");
    folder.Write(u"a.pptm", "macros");
    WriteBackup(u"a..bak", u"a.pptm", "old macros");

    for (const bool anyBackup : {false, true}) {
        call.anyBackup = anyBackup;
        EXPECT_EQ(Restore(file).status, FileStatus::NothingCounted);
        EXPECT_EQ(Clean(file).status, FileStatus::NothingCounted);
    }
    EXPECT_EQ(Content(u"a..bak"), "old macros");
    EXPECT_EQ(Restore(folder.PathOf(u"a.pptm")).status, FileStatus::Counted);
    EXPECT_EQ(Content(u"a.pptx"), "new");
}

TEST_F(BackupCommandsTest, CleanDeletesTheBackupsAndTheirRecord)
{
    const String file = folder.Write(u"a.pptx", "new");
    WriteBackup(u"a..bak", u"a.pptx", "old");
    WriteBackup(u"a..bak.2", u"a.pptx", "older");

    const BackupReport report = Clean(file);

    EXPECT_EQ(report.status, FileStatus::Counted);
    EXPECT_EQ(report.backup, folder.PathOf(u"a..bak.2"));
    EXPECT_THAT(report.older, ElementsAre(folder.PathOf(u"a..bak")));
    EXPECT_THAT(FilesOfFolder(folder.Path()), ElementsAre(file));
    EXPECT_EQ(Content(u"a.pptx"), "new");
}

TEST_F(BackupCommandsTest, CleanKeepsTheLinesOfOtherBackups)
{
    const String file = folder.Write(u"a.pptx", "new");
    const String other = folder.Write(u"b.pptx", "new");
    WriteBackup(u"a..bak", u"a.pptx", "old a");
    WriteBackup(u"b..bak", u"b.pptx", "old b");

    EXPECT_EQ(Clean(file).status, FileStatus::Counted);

    EXPECT_EQ(Restore(other).status, FileStatus::Counted);
    EXPECT_EQ(Content(u"b.pptx"), "old b");
    EXPECT_EQ(Content(u".tessarine-backups").find("a..bak"), std::string::npos);
}

TEST_F(BackupCommandsTest, CleanDropsWhatACleanThatWasKilledLeft)
{
    const String file = folder.Write(u"a.pptx", "new");
    WriteBackup(u"a..bak", u"a.pptx", "old");
    std::filesystem::remove(ToUtf8(folder.PathOf(u"a..bak")));

    EXPECT_EQ(Clean(file).status, FileStatus::NothingCounted);

    EXPECT_THAT(FilesOfFolder(folder.Path()), ElementsAre(file));
}

TEST_F(BackupCommandsTest, RemovesTheNewFilesOfKilledProcesses)
{
    const String file = folder.Write(u"a.pptx", "new");
    folder.Write(u".tessarine-aB3xYz", "half");

    Restore(file);

    EXPECT_THAT(FilesOfFolder(folder.Path()), ElementsAre(file));
}

TEST_F(BackupCommandsTest, CleanLeavesAPersonsFileAlone)
{
    const String file = folder.Write(u"a.pptx", "new");
    folder.Write(u"a..bak", "mine");

    const BackupReport report = Clean(file);

    EXPECT_EQ(report.status, FileStatus::NothingCounted);
    EXPECT_THAT(report.warnings,
                ElementsAre(folder.PathOf(u"a..bak") +
                            u" was not made by this version of tessarine-batch and stays (--any-backup "
                            u"takes it all the same)"));
    EXPECT_EQ(Content(u"a..bak"), "mine");
}

TEST_F(BackupCommandsTest, CleanLeavesABackupThatSomebodyChanged)
{
    const String file = folder.Write(u"a.pptx", "new");
    WriteBackup(u"a..bak", u"a.pptx", "old");
    WriteBackup(u"a..bak.2", u"a.pptx", "older");
    folder.Write(u"a..bak", "edited");

    const BackupReport report = Clean(file);

    EXPECT_EQ(report.status, FileStatus::NotProcessed);
    EXPECT_NE(report.error.find(u"a..bak has been changed since"), String::npos);
    EXPECT_EQ(Content(u"a..bak"), "edited");
    EXPECT_EQ(Content(u"a..bak.2"), "<missing>");
}

TEST_F(BackupCommandsTest, AFileIsNeverItsOwnBackup)
{
    const String file = folder.Write(u"a.bak", "content");

    for (const bool anyBackup : {false, true}) {
        call.anyBackup = anyBackup;
        EXPECT_EQ(Clean(file).status, FileStatus::NothingCounted);
    }
    EXPECT_EQ(Content(u"a.bak"), "content");
}

class AnyBackupTest : public BackupCommandsTest
{
protected:
    AnyBackupTest() { call.anyBackup = true; }
};

TEST_F(AnyBackupTest, RestoresAndCleansWhatNoRecordKnows)
{
    const String file = folder.Write(u"a.pptx", "new");
    folder.Write(u"a..bak", "old");

    EXPECT_EQ(Restore(file).status, FileStatus::Counted);
    EXPECT_EQ(Content(u"a.pptx"), "old");
    EXPECT_EQ(Clean(file).status, FileStatus::Counted);
    EXPECT_EQ(Content(u"a..bak"), "<missing>");
}

TEST_F(AnyBackupTest, RestoresAChangedBackup)
{
    const String file = folder.Write(u"a.pptx", "new");
    WriteBackup(u"a..bak", u"a.pptx", "old");
    folder.Write(u"a..bak", "edited");

    EXPECT_EQ(Restore(file).status, FileStatus::Counted);
    EXPECT_EQ(Content(u"a.pptx"), "edited");
}

TEST_F(AnyBackupTest, TakesTheDesktopsBackupWhenThereIsNoOther)
{
    const String file = folder.Write(u"a.pptx", "PK\x03\x04 new");
    folder.Write(u"a.bak", "PK\x03\x04 old");

    EXPECT_EQ(Restore(file).backup, folder.PathOf(u"a.bak"));
    EXPECT_EQ(Content(u"a.pptx"), "PK\x03\x04 old");
}

TEST_F(AnyBackupTest, PutsNoBinaryBackupOverAPackage)
{
    const String file = folder.Write(u"a.pptx", "PK\x03\x04 new");
    folder.Write(u"a.bak", "\xD0\xCF\x11\xE0 old");

    EXPECT_EQ(Restore(file).status, FileStatus::NothingCounted);
    EXPECT_EQ(Content(u"a.pptx"), "PK\x03\x04 new");
}

TEST_F(AnyBackupTest, PutsNoNeighboursBackupOverAFile)
{
    const String file = folder.Write(u"a.pptx", "PK\x03\x04 new");
    folder.Write(u"a.ppt", "PK\x03\x04 in truth");
    folder.Write(u"a.bak", "PK\x03\x04 old");

    EXPECT_EQ(Restore(file).status, FileStatus::NothingCounted);
}

TEST_F(AnyBackupTest, TouchesNoBackupThatTwoFilesMayOwn)
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

TEST_F(AnyBackupTest, ANeighbourOutsideTheCallOwnsNoBackup)
{
    const String file = folder.Write(u"a.pptx", "new");
    const String show = folder.Write(u"a.ppsx", "show");
    folder.Write(u"a..bak", "old");

    EXPECT_EQ(Restore(file).status, FileStatus::Counted);
    named.push_back({show, {}});
    EXPECT_EQ(Restore(file).status, FileStatus::NotProcessed);
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

TEST(BackupSummary, CountsEveryBackupOfAFile)
{
    BackupSummary summary;
    summary.Add({1, u"a", u"a..bak.3", {}, {u"a..bak.2", u"a..bak"}});
    summary.Add({2, u"b", {}, {}});
    summary.Add({0, u"c", u"c..bak", u"could not delete c..bak.2"});

    EXPECT_EQ(summary.backups, 4);
}

}  // namespace

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST_F(BackupCommandsTest, RestoreNeverGoesThroughALink)
{
    const String file = folder.Write(u"a.pptx", "new");
    WriteBackup(u"a..bak", u"a.pptx", "old");
    std::filesystem::rename(ToUtf8(folder.PathOf(u"a..bak")), ToUtf8(folder.PathOf(u"b")));
    std::filesystem::create_symlink("b", ToUtf8(folder.PathOf(u"a..bak")));

    EXPECT_EQ(Restore(file).status, FileStatus::NotProcessed);
    EXPECT_EQ(Content(u"a.pptx"), "new");
}

#else

TEST_F(BackupCommandsTest, FindsABackupWhateverTheCaseOfTheName)
{
    folder.Write(u"a.pptx", "new");
    WriteBackup(u"a..bak", u"a.pptx", "old");
    WriteBackup(u"A..bak.2", u"A.pptx", "older");

    EXPECT_EQ(Restore(folder.PathOf(u"A.PPTX")).status, FileStatus::Counted);
    EXPECT_EQ(Content(u"a.pptx"), "older");
    EXPECT_EQ(Clean(folder.PathOf(u"A.pptx")).status, FileStatus::Counted);
    EXPECT_THAT(FilesOfFolder(folder.Path()), testing::SizeIs(1)) << "the file itself";
    EXPECT_EQ(Content(u"a.pptx"), "older");
}

TEST_F(AnyBackupTest, AFileIsNeverItsOwnBackupInCapitals)
{
    const String file = folder.Write(u"a.BAK", "content");

    EXPECT_EQ(Restore(file).status, FileStatus::NothingCounted);
    EXPECT_EQ(Clean(file).status, FileStatus::NothingCounted);
    EXPECT_EQ(Content(u"a.BAK"), "content");
}

TEST_F(AnyBackupTest, AFileIsNotItsOwnNeighbourInCapitals)
{
    const String file = folder.Write(u"A.PPTX", "new");
    folder.Write(u"A..bak", "old");

    EXPECT_EQ(Restore(file).status, FileStatus::Counted);
    EXPECT_EQ(Content(u"A.PPTX"), "old");
}

#endif

}  // namespace tessarine::batch
