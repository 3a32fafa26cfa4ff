#include "batch/RunBackups.h"

#ifndef _WIN32
#include <unistd.h>
#endif

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/BackupNames.h"
#include "files/Files.h"
#include "files/FileState.h"
#include "log/Treatments.h"
#include "platform/Failure.h"
#include "platform/NativePath.h"
#include "run/FileWarnings.h"
#include "support/TemporaryFolder.h"

namespace tessarine::batch
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

FileIdentity IdOf(const String& path)
{
    const auto state = FileStateOf(path);
    return state ? state->identity : FileIdentity();
}

class RunBackupsTest : public testing::Test
{
protected:
    std::string Content(StringView name) { return tessarine::ContentOf(folder.PathOf(name)); }

    /// What one run does for one file. Gives the reason of a failure.
    String Make(const String& path, BackupNaming naming = BackupNaming::First)
    {
        RunBackups backups(naming);
        backups.Remember(path);
        try {
            backups.Make(path, [&] { return IdOf(path); });
            return {};
        } catch (const Failure& failure) {
            return failure.Reason();
        }
    }

    String MakeNumbered(const String& path) { return Make(path, BackupNaming::Numbered); }

    TemporaryFolder folder;
    FileWarnings warnings;
};

TEST_F(RunBackupsTest, CopiesTheFileBesideItself)
{
    const String file = folder.Write(u"a.pptx", "old");

    EXPECT_EQ(Make(file), u"");

    EXPECT_EQ(Content(u"a..bak"), "old");
    EXPECT_THAT(warnings.Take(), IsEmpty());
}

TEST_F(RunBackupsTest, KeepsTheFirstBackupAndSaysSo)
{
    const String file = folder.Write(u"a.pptx", "old");
    Make(file);
    folder.Write(u"a.pptx", "changed by the first run");

    EXPECT_EQ(Make(file), u"");

    EXPECT_EQ(Content(u"a..bak"), "old");
    EXPECT_THAT(warnings.Take(), ElementsAre(u"keeps the backup of an earlier run, " + folder.PathOf(u"a..bak") +
                                             u"; what it held before this run is in no backup"));
}

TEST_F(RunBackupsTest, IsContentWithABackupThatIsUpToDate)
{
    const String file = folder.Write(u"a.pptx", "old");
    Make(file);

    EXPECT_EQ(Make(file), u"");
    EXPECT_THAT(warnings.Take(), IsEmpty());
}

TEST_F(RunBackupsTest, WritesOverNobodysFile)
{
    const String file = folder.Write(u"a.pptx", "old");
    folder.Write(u"a..bak", "mine");

    EXPECT_EQ(Make(file),
              u"The file " + folder.PathOf(u"a..bak") +
                  u" is in the way of its backup and was not made by tessarine-batch; move it away, or give "
                  u"--backup=numbered.");
    EXPECT_EQ(Content(u"a..bak"), "mine");
}

TEST_F(RunBackupsTest, TakesAnEqualFileForABackupAndSaysSo)
{
    const String file = folder.Write(u"a.pptx", "old");
    folder.Write(u"a..bak", "old");

    EXPECT_EQ(Make(file), u"");
    EXPECT_THAT(warnings.Take(), ElementsAre(u"has no backup but " + folder.PathOf(u"a..bak") +
                                             u", which has the same content and was not made by tessarine-batch"));
}

TEST_F(RunBackupsTest, WritesOverNoBackupThatSomebodyChanged)
{
    const String file = folder.Write(u"a.pptx", "old");
    Make(file);
    folder.Write(u"a..bak", "OLD");

    EXPECT_NE(Make(file).find(u"has been changed since tessarine-batch made it"), String::npos);
    EXPECT_EQ(Content(u"a..bak"), "OLD");
}

TEST_F(RunBackupsTest, WritesOverNoBackupOfANeighbour)
{
    const String macros = folder.Write(u"a.pptm", "macros");
    const String file = folder.Write(u"a.pptx", "old");
    Make(macros);

    EXPECT_NE(Make(file).find(u"is the backup of another file"), String::npos);
    EXPECT_EQ(Content(u"a..bak"), "macros");
}

TEST_F(RunBackupsTest, KeepsNoCopyOfAFileThatOthersHaveChangedMeanwhile)
{
    const String file = folder.Write(u"a.pptx", "half");
    RunBackups backups(BackupNaming::First);

    EXPECT_EQ(Skip([&] {
                  backups.Make(file,
                               []() -> FileIdentity { throw Failure(FailureNumber::SharingViolation, u"changed"); });
              }),
              FailureNumber::SharingViolation);

    EXPECT_EQ(Content(u"a..bak"), "<missing>");
    EXPECT_EQ(Content(u".tessarine-backups"), "<missing>");
}

TEST_F(RunBackupsTest, MakesANewNumberInEachRun)
{
    const String file = folder.Write(u"a.pptx", "one");
    EXPECT_EQ(MakeNumbered(file), u"");
    folder.Write(u"a.pptx", "two");
    EXPECT_EQ(MakeNumbered(file), u"");
    folder.Write(u"a.pptx", "three");
    EXPECT_EQ(MakeNumbered(file), u"");

    EXPECT_EQ(Content(u"a..bak"), "one");
    EXPECT_EQ(Content(u"a..bak.2"), "two");
    EXPECT_EQ(Content(u"a..bak.3"), "three");
    EXPECT_THAT(warnings.Take(), IsEmpty());
}

TEST_F(RunBackupsTest, GivesNoNumberASecondTime)
{
    const String file = folder.Write(u"a.pptx", "one");
    MakeNumbered(file);
    MakeNumbered(file);
    MakeNumbered(file);
    std::filesystem::remove(ToUtf8(folder.PathOf(u"a..bak.2")));
    folder.Write(u"a..bak.4", "somebody's");

    EXPECT_EQ(MakeNumbered(file), u"");

    EXPECT_EQ(Content(u"a..bak.2"), "<missing>");
    EXPECT_EQ(Content(u"a..bak.4"), "somebody's");
    EXPECT_EQ(Content(u"a..bak.5"), "one");
}

TEST_F(RunBackupsTest, NumbersLeaveNeighboursAndPersonsFilesAlone)
{
    const String file = folder.Write(u"a.pptx", "old");
    const String macros = folder.Write(u"a.pptm", "macros");
    folder.Write(u"a..bak", "mine");

    EXPECT_EQ(MakeNumbered(file), u"");
    EXPECT_EQ(MakeNumbered(macros), u"");

    EXPECT_EQ(Content(u"a..bak"), "mine");
    EXPECT_EQ(Content(u"a..bak.2"), "old");
    EXPECT_EQ(Content(u"a..bak.3"), "macros");
}

TEST_F(RunBackupsTest, MakesNoBackupWhereItsFolderIsMissing)
{
    const String file = folder.Write(u"pptx/a.pptx", "old");

    EXPECT_NE(Make(file), u"");
    EXPECT_EQ(Content(u"pptx/a.pptx"), "old");
}

TEST(BackupNames, AreReadAsTheyAreMade)
{
    EXPECT_EQ(NumberedBackup(u"a..bak", 1), u"a..bak");
    EXPECT_EQ(NumberedBackup(u"a..bak", 12), u"a..bak.12");
    EXPECT_EQ(NumberOfBackup(u"a..bak", u"a..bak"), 1);
    EXPECT_EQ(NumberOfBackup(u"a..bak", u"a..bak.12"), 12);
    for (const auto* other : {u"b..bak", u"a..bak.", u"a..bak.1", u"a..bak.02", u"a..bak.+2", u"a..bak.2x",
                              u"a..bak.-2", u"a..bak.99999999999999999999"})
        EXPECT_EQ(NumberOfBackup(u"a..bak", other), std::nullopt) << ToUtf8(other);
}

}  // namespace

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST_F(RunBackupsTest, NeverGoesThroughALink)
{
    const String file = folder.Write(u"a.pptx", "old");
    folder.Write(u"victim", "old");
    std::filesystem::create_symlink("victim", ToUtf8(folder.PathOf(u"a..bak")));

    EXPECT_NE(Make(file).find(u"is a link, a folder or something else that is no file"), String::npos);
    EXPECT_EQ(Content(u"victim"), "old");
    EXPECT_TRUE(std::filesystem::is_symlink(ToUtf8(folder.PathOf(u"a..bak"))));
}

TEST_F(RunBackupsTest, TakesNoOtherNameOfTheFileForItsBackup)
{
    const String file = folder.Write(u"a.pptx", "old");
    std::filesystem::create_hard_link(ToUtf8(file), ToUtf8(folder.PathOf(u"a..bak")));

    EXPECT_NE(Make(file).find(u"is the same file under another name"), String::npos);
}

TEST_F(RunBackupsTest, GivesTheBackupTheModeThatTheFileHadBeforeTheRun)
{
    const String file = folder.Write(u"a.pptx", "old");
    SetMode(file, 0444);
    RunBackups backups(BackupNaming::First);
    backups.Remember(file);
    SetMode(file, 0644);

    backups.Make(file, [&] { return IdOf(file); });

    EXPECT_EQ(ModeOf(folder.PathOf(u"a..bak")), 0444u);
}

TEST_F(RunBackupsTest, TouchesNothingInAFolderThatWasPutInThePlaceOfItsOwn)
{
    const auto native = [&](StringView name) { return NativePath(folder.PathOf(name)); };
    std::filesystem::create_directory(native(u"decks"));
    std::filesystem::create_directory(native(u"victim"));
    const String file = folder.Write(u"decks/a.pptx", "old");
    folder.Write(u"victim/a.pptx", "theirs");
    folder.Write(u"victim/a..bak", "theirs, too");
    const FileIdentity opened = IdOf(file);
    RunBackups backups(BackupNaming::First);
    backups.Remember(file);
    std::filesystem::rename(native(u"decks"), native(u"away"));
    std::filesystem::create_directory_symlink(native(u"victim"), native(u"decks"));

    EXPECT_EQ(Skip([&] { backups.Make(file, [&] { return opened; }); }), FailureNumber::SharingViolation);

    EXPECT_EQ(Content(u"victim/a..bak"), "theirs, too");
    EXPECT_EQ(FilesOfFolder(folder.PathOf(u"victim")).size(), 2u);
}

TEST_F(RunBackupsTest, KeepsTheBackupWhenItCannotBeRecorded)
{
    const String file = folder.Write(u"a.pptx", "old");
    folder.MakeFolder(u".tessarine-backups");
    folder.MakeFolder(u".tessarine-backups-" + FromUtf8(std::to_string(geteuid())));

    EXPECT_EQ(Make(file), u"");

    EXPECT_EQ(Content(u"a..bak"), "old");
    const auto told = warnings.Take();
    ASSERT_EQ(told.size(), 1u);
    EXPECT_NE(told[0].find(u"only restore --any-backup takes"), String::npos);
}

#else

TEST_F(RunBackupsTest, KnowsTheFirstBackupWhateverTheCaseOfTheName)
{
    const String file = folder.Write(u"a.pptx", "old");
    ASSERT_EQ(Make(file), u"");
    folder.Write(u"a.pptx", "new");

    EXPECT_EQ(Make(folder.PathOf(u"A.PPTX")), u"");
    EXPECT_EQ(Content(u"a..bak"), "old");
    EXPECT_EQ(MakeNumbered(folder.PathOf(u"A.PPTX")), u"");
    EXPECT_EQ(Content(u"a..bak.2"), "new");
}

#endif

}  // namespace tessarine::batch
