#include "run/BackupFolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <span>

#include <gmock/gmock.h>

#include "files/Files.h"
#include "log/Treatments.h"
#include "platform/Crc32.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using State = BackupFolder::State;

CopiedContent ContentIs(std::string_view text)
{
    return {text.size(), Crc32(std::as_bytes(std::span(text)))};
}

class BackupFolderTest : public testing::Test
{
protected:
    String Path() const { return folder.Path() + u"/"; }

    /// Writes a backup and its line in the record.
    void WriteBackup(const String& name, const std::string& content) const
    {
        folder.Write(name, content);
        BackupFolder backups(Path());
        backups.Record(name, backups.OriginalAt(deck), ContentIs(content));
    }

    /// As one sees the folder who opens it afresh.
    State StateOf(const String& name) const
    {
        BackupFolder backups(Path());
        return backups.StateOf(name, backups.OriginalAt(deck));
    }

    std::string RecordText() const { return ContentOf(folder.PathOf(u".tessarine-backups")); }

    const TemporaryFolder folder;
    const String deck = folder.Write(u"a.pptx", "deck");
};

TEST_F(BackupFolderTest, KnowsABackupThatWasRecorded)
{
    WriteBackup(u"a..bak", "old");

    EXPECT_EQ(StateOf(u"a..bak"), State::Intact);
    EXPECT_EQ(RecordText(), "a..bak\ta.pptx\t3\t" + RecordText().substr(RecordText().size() - 9));
}

TEST_F(BackupFolderTest, TellsWhatElseStandsUnderTheName)
{
    EXPECT_EQ(StateOf(u"a..bak"), State::Missing);
    folder.Write(u"a..bak", "mine");
    EXPECT_EQ(StateOf(u"a..bak"), State::NotRecorded);

    WriteBackup(u"a..bak", "old");
    folder.Write(u"a..bak", "old and longer");
    EXPECT_EQ(StateOf(u"a..bak"), State::Changed);
    folder.Write(u"a..bak", "OLD");
    EXPECT_EQ(StateOf(u"a..bak"), State::Changed);
    BackupFolder backups(Path());
    EXPECT_EQ(backups.StateOf(u"a..bak", backups.OriginalAt(folder.PathOf(u"a.pptm"))), State::OfAnother);

    std::filesystem::remove(ToUtf8(folder.PathOf(u"a..bak")));
    std::filesystem::create_symlink("a.pptx", ToUtf8(folder.PathOf(u"a..bak")));
    EXPECT_EQ(StateOf(u"a..bak"), State::NotAFile);
    std::filesystem::remove(ToUtf8(folder.PathOf(u"a..bak")));
    ASSERT_EQ(mkfifo(ToUtf8(folder.PathOf(u"a..bak")).c_str(), 0600), 0);
    EXPECT_EQ(StateOf(u"a..bak"), State::NotAFile);
}

TEST_F(BackupFolderTest, LearnsOfBackupsThatAnotherRunMakes)
{
    BackupFolder backups(Path());
    const auto original = backups.OriginalAt(deck);
    folder.Write(u"a..bak", "old");
    EXPECT_EQ(backups.StateOf(u"a..bak", original), State::NotRecorded);

    WriteBackup(u"a..bak", "old");

    EXPECT_EQ(backups.StateOf(u"a..bak", original), State::Intact);
}

TEST_F(BackupFolderTest, ListsTheNamesOfAFilesBackups)
{
    WriteBackup(u"a..bak", "old");
    WriteBackup(u"a..bak.2", "older");
    WriteBackup(u"a..bak", "old again");

    BackupFolder backups(Path());
    EXPECT_THAT(backups.NamesFor(backups.OriginalAt(deck)), ElementsAre(u"a..bak", u"a..bak.2"));
    EXPECT_THAT(backups.NamesFor(backups.OriginalAt(folder.PathOf(u"b.pptx"))), IsEmpty());
}

TEST_F(BackupFolderTest, AddsALineAfterOneThatWasCut)
{
    WriteBackup(u"a..bak", "old");
    folder.Write(u".tessarine-backups", RecordText() + "b..bak\tb.pp");

    WriteBackup(u"a..bak.2", "older");

    EXPECT_EQ(StateOf(u"a..bak"), State::Intact);
    EXPECT_EQ(StateOf(u"a..bak.2"), State::Intact);
}

TEST_F(BackupFolderTest, WritesIntoNoRecordThatIsALink)
{
    folder.Write(u"victim", "mine");
    std::filesystem::create_symlink("victim", ToUtf8(folder.PathOf(u".tessarine-backups")));

    WriteBackup(u"a..bak", "old");

    EXPECT_EQ(ContentOf(folder.PathOf(u"victim")), "mine");
    EXPECT_EQ(StateOf(u"a..bak"), State::Intact);
}

TEST_F(BackupFolderTest, WritesIntoNoRecordWithASecondName)
{
    const String victim = folder.Write(u"victim", "mine");
    std::filesystem::create_hard_link(ToUtf8(victim), ToUtf8(folder.PathOf(u".tessarine-backups")));

    WriteBackup(u"a..bak", "old");

    EXPECT_EQ(ContentOf(victim), "mine");
    EXPECT_EQ(StateOf(u"a..bak"), State::Intact);
}

TEST_F(BackupFolderTest, WaitsForNoRecordThatIsAPipe)
{
    ASSERT_EQ(mkfifo(ToUtf8(folder.PathOf(u".tessarine-backups")).c_str(), 0666), 0);

    WriteBackup(u"a..bak", "old");

    EXPECT_EQ(StateOf(u"a..bak"), State::Intact);
}

TEST_F(BackupFolderTest, BelievesNobodyElse)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser gives files away";
    constexpr uid_t victim = 12345;
    constexpr uid_t attacker = 23456;
    const auto give = [&](const String& name, uid_t owner) {
        ASSERT_EQ(chown(ToUtf8(folder.PathOf(name)).c_str(), owner, owner), 0);
    };
    give(u"a.pptx", victim);
    WriteBackup(u"a..bak", "old");

    give(u".tessarine-backups", attacker);
    EXPECT_EQ(StateOf(u"a..bak"), State::NotRecorded);
    give(u".tessarine-backups", victim);
    EXPECT_EQ(StateOf(u"a..bak"), State::Intact);
    give(u"a..bak", attacker);
    EXPECT_EQ(StateOf(u"a..bak"), State::NotRecorded);
    give(u"a..bak", victim);
    EXPECT_EQ(StateOf(u"a..bak"), State::Intact);
}

TEST_F(BackupFolderTest, KeepsASecondRecordBesideSomebodyElses)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser gives files away";
    folder.Write(u".tessarine-backups", "theirs");
    ASSERT_EQ(chown(ToUtf8(folder.PathOf(u".tessarine-backups")).c_str(), 23456, 23456), 0);

    WriteBackup(u"a..bak", "old");

    EXPECT_EQ(RecordText(), "theirs");
    EXPECT_THAT(ContentOf(folder.PathOf(u".tessarine-backups-0")), StartsWith("a..bak\t"));
    EXPECT_EQ(StateOf(u"a..bak"), State::Intact);
}

TEST_F(BackupFolderTest, ForgetsWhatItRemovedAndNothingElse)
{
    WriteBackup(u"a..bak", "old");
    WriteBackup(u"b..bak", "other");
    SetMode(folder.PathOf(u".tessarine-backups"), 0640);
    {
        BackupFolder backups(Path());
        backups.Remove(u"a..bak");
        backups.ForgetRemoved();
    }
    EXPECT_THAT(RecordText(), StartsWith("b..bak\t"));
    EXPECT_EQ(ModeOf(folder.PathOf(u".tessarine-backups")), 0640u);

    BackupFolder backups(Path());
    backups.Remove(u"b..bak");
    backups.ForgetRemoved();

    EXPECT_THAT(FilesOfFolder(folder.Path()), ElementsAre(deck));
}

TEST_F(BackupFolderTest, ForgetsNoBackupThatIsBeingMade)
{
    WriteBackup(u"a..bak", "old");
    BackupFolder backups(Path());
    backups.Remove(u"a..bak");
    BackupFolder run(Path());
    run.Record(u"a..bak", run.OriginalAt(deck), ContentIs("old"));  // the same line once more

    backups.ForgetRemoved();

    folder.Write(u"a..bak", "old");
    EXPECT_EQ(StateOf(u"a..bak"), State::Intact);
    EXPECT_EQ(std::ranges::count(RecordText(), '\n'), 1);
}

TEST_F(BackupFolderTest, ForgetsWhatAKilledProcessRemoved)
{
    WriteBackup(u"a..bak", "old");
    WriteBackup(u"a..bak.2", "older");
    std::filesystem::remove(ToUtf8(folder.PathOf(u"a..bak")));
    BackupFolder backups(Path());

    backups.NoteMissing(backups.OriginalAt(deck));
    backups.ForgetRemoved();

    EXPECT_THAT(RecordText(), StartsWith("a..bak.2\t"));
}

TEST_F(BackupFolderTest, RecordsAgainAfterAnotherProcessDeletedTheRecord)
{
    BackupFolder backups(Path());
    backups.Record(u"a..bak", backups.OriginalAt(deck), ContentIs("old"));
    std::filesystem::remove(ToUtf8(folder.PathOf(u".tessarine-backups")));

    backups.Record(u"a..bak.2", backups.OriginalAt(deck), ContentIs("older"));

    EXPECT_THAT(RecordText(), StartsWith("a..bak.2\t"));
}

TEST_F(BackupFolderTest, NamesAFileOfAnotherFolderInFull)
{
    const BackupFolder backups(Path());

    EXPECT_EQ(backups.OriginalAt(deck).name, u"a.pptx");
    EXPECT_EQ(backups.OriginalAt(folder.PathOf(u"sub/a.pptx")).name, folder.PathOf(u"sub/a.pptx"));
}

TEST_F(BackupFolderTest, ComparesWithTheFileItself)
{
    const BackupFolder backups(Path());
    folder.Write(u"same", "deck");
    folder.Write(u"other", "DECK");
    folder.Write(u"longer", "decks");
    std::filesystem::create_hard_link(ToUtf8(deck), ToUtf8(folder.PathOf(u"name")));

    EXPECT_TRUE(backups.HasContentOf(u"same", deck));
    EXPECT_FALSE(backups.HasContentOf(u"other", deck));
    EXPECT_FALSE(backups.HasContentOf(u"longer", deck));
    EXPECT_TRUE(backups.IsSameFile(u"name", deck));
    EXPECT_FALSE(backups.IsSameFile(u"same", deck));
}

TEST_F(BackupFolderTest, SetsNoModeThroughALink)
{
    const String victim = folder.Write(u"victim");
    SetMode(victim, 0600);
    std::filesystem::create_symlink("victim", ToUtf8(folder.PathOf(u"a..bak")));

    EXPECT_NE(Skip([&] { BackupFolder(Path()).NarrowMode(u"a..bak", 0400); }), 0);
    EXPECT_EQ(ModeOf(victim), 0600u);
}

TEST_F(BackupFolderTest, OfAMissingFolderIsAFailure)
{
    EXPECT_EQ(Skip([&] { BackupFolder(folder.PathOf(u"gone/")); }), FailureNumber::PathNotFound);
}

}  // namespace
}  // namespace tessarine
