#include "saving/RunJournal.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <functional>

#include "files/FileDescriptor.h"
#include "files/FileLock.h"
#include "log/ErrorLog.h"
#include "support/ErrorLogRecorder.h"
#include "support/KilledRun.h"
#include "support/OrdinaryUser.h"
#include "support/OtherProcess.h"
#include "support/TemporaryFolder.h"

// Processes that are killed in the middle of a file, and what the next start makes of what they left.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class Journal : public testing::Test
{
protected:
    Journal()
    {
        SetTimes(file_, {1000000000, 111}, {1100000000, 222});
        SetMode(file_, 0444);
    }

    static void SetTimes(StringView path, timespec lastAccess, timespec lastWrite)
    {
        const timespec times[] = {lastAccess, lastWrite};
        ASSERT_EQ(utimensat(AT_FDCWD, ToUtf8(path).c_str(), times, 0), 0);
    }

    static time_t LastWriteOf(StringView path)
    {
        struct stat status = {};
        EXPECT_EQ(stat(ToUtf8(path).c_str(), &status), 0);
        return status.st_mtim.tv_sec;
    }

    /// Puts a new file in the place of `file_`, as a save does.
    void Replace(const std::string& content) const
    {
        const String path = folder_.Write(u"new", content);
        SetMode(path, ModeOf(file_));
        const FileDescriptor file(open(ToUtf8(path).c_str(), O_RDONLY | O_CLOEXEC));
        NoteReplacement(ToUtf8(file_), file.get());
        std::filesystem::rename(ToUtf8(path), ToUtf8(file_));
    }

    /// What a run does to a read-only file whose dates are kept, up to its end.
    void BeginOn(RunJournal& journal, StringView path) const
    {
        journal.Begin(path, GetAttributes(path), GetFileDateTime(path));
        ClearAttributes(path, GetAttributes(path));
    }

    static std::vector<std::string> Journals()
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(ToUtf8(ApplicationDataFolder)))
            if (entry.path().extension() == ".journal")
                names.push_back(entry.path());
        return names;
    }

    const ErrorLogRecorder log_;
    const TemporaryFolder folder_;
    const String file_ = folder_.Write(u"a.pptx", "old");
};

using KilledRun = Journal;
using HostileJournal = Journal;

TEST_F(KilledRun, LeavesAReadOnlyFileThatIsMadeReadOnlyAgain)
{
    InKilledProcess([this] {
        RunJournal journal;
        BeginOn(journal, file_);
        KillThisProcess();
    });
    ASSERT_EQ(ModeOf(file_), 0644u);

    const auto recovered = RecoverFromKilledRuns();

    EXPECT_EQ(ModeOf(file_), 0444u);
    ASSERT_THAT(recovered, SizeIs(1));
    EXPECT_EQ(recovered[0].path, file_);
    EXPECT_EQ(recovered[0].text, u"a run that was killed had left it writable; its mode is put back");
    EXPECT_THAT(Journals(), IsEmpty());
    EXPECT_THAT(RecoverFromKilledRuns(), IsEmpty());
}

TEST_F(KilledRun, LeavesANewFileThatGetsModeAndDatesOfTheOldOne)
{
    InKilledProcess([this] {
        RunJournal journal;
        BeginOn(journal, file_);
        Replace("new");
        KillThisProcess();
    });
    ASSERT_NE(LastWriteOf(file_), 1100000000);

    EXPECT_THAT(TextsOfRecovery(), ElementsAre("a run that was killed had left it writable and with a new date; its "
                                               "mode and dates are put back"));

    EXPECT_EQ(ContentOf(file_), "new");
    EXPECT_EQ(ModeOf(file_), 0444u);
    EXPECT_EQ(LastWriteOf(file_), 1100000000);
}

TEST_F(KilledRun, LeavesAFileWithItsDateAlreadyThatGetsItsMode)
{
    InKilledProcess([this] {
        RunJournal journal;
        const FileTimes times = GetFileDateTime(file_);
        BeginOn(journal, file_);
        Replace("new");
        SetFileDateTime(file_, times);
        KillThisProcess();
    });

    EXPECT_THAT(TextsOfRecovery(), ElementsAre("a run that was killed had left it writable; its mode is put back"));

    EXPECT_EQ(ModeOf(file_), 0444u);
    EXPECT_EQ(LastWriteOf(file_), 1100000000);
}

TEST_F(KilledRun, LeavesAFileThatGotANewDateAloneToItsOldOne)
{
    InKilledProcess([this] {
        RunJournal journal;
        BeginOn(journal, file_);
        const FileDescriptor file(open(ToUtf8(file_).c_str(), O_RDONLY | O_CLOEXEC));
        NoteNewDate(file.get(), {1200000000, 333});
        SetTimes(file_, {1200000000, 0}, {1200000000, 333});
        KillThisProcess();
    });

    EXPECT_THAT(TextsOfRecovery(), SizeIs(1));

    EXPECT_EQ(ModeOf(file_), 0444u);
    EXPECT_EQ(LastWriteOf(file_), 1100000000);
}

TEST_F(KilledRun, SaysNothingOfAFileThatHasAllItHad)
{
    InKilledProcess([this] {
        RunJournal journal;
        journal.Begin(file_, GetAttributes(file_), GetFileDateTime(file_));
        KillThisProcess();
    });

    EXPECT_THAT(TextsOfRecovery(), IsEmpty());
    EXPECT_THAT(Journals(), IsEmpty());
}

TEST_F(KilledRun, SaysNothingOfAFileThatIsGone)
{
    InKilledProcess([this] {
        RunJournal journal;
        BeginOn(journal, file_);
        KillThisProcess();
    });
    DeleteFile(file_);

    EXPECT_THAT(TextsOfRecovery(), IsEmpty());
    EXPECT_THAT(Journals(), IsEmpty());
}

TEST_F(KilledRun, LeavesAFileAloneThatSomebodyHasChangedSince)
{
    InKilledProcess([this] {
        RunJournal journal;
        BeginOn(journal, file_);
        KillThisProcess();
    });
    folder_.Write(u"a.pptx", "changed");

    EXPECT_THAT(TextsOfRecovery(), ElementsAre(HasSubstr("it has been changed since, so it stays as it is")));

    EXPECT_EQ(ModeOf(file_), 0644u);
    EXPECT_NE(LastWriteOf(file_), 1100000000);
    EXPECT_THAT(Journals(), IsEmpty());
}

TEST_F(KilledRun, LeavesAModeAloneThatSomebodyHasSetSince)
{
    InKilledProcess([this] {
        RunJournal journal;
        BeginOn(journal, file_);
        Replace("new");
        KillThisProcess();
    });
    SetMode(file_, 0600);

    EXPECT_THAT(TextsOfRecovery(),
                ElementsAre("a run that was killed had left it with a new date; its dates are put back"));

    EXPECT_EQ(ModeOf(file_), 0600u);
    EXPECT_EQ(LastWriteOf(file_), 1100000000);
}

TEST_F(KilledRun, LeavesANewDateUnlessDatesAreKept)
{
    InKilledProcess([this] {
        RunJournal journal;
        journal.Begin(file_, GetAttributes(file_), {});
        ClearAttributes(file_, GetAttributes(file_));
        Replace("new");
        KillThisProcess();
    });

    EXPECT_THAT(TextsOfRecovery(), ElementsAre("a run that was killed had left it writable; its mode is put back"));

    EXPECT_EQ(ModeOf(file_), 0444u);
    EXPECT_NE(LastWriteOf(file_), 1100000000);
}

TEST_F(KilledRun, OfAnotherFolderIsPutRightByFullPaths)
{
    InKilledProcess([this] {
        std::filesystem::current_path(ToUtf8(folder_.Path()));
        RunJournal journal;
        BeginOn(journal, u"a.pptx");
        KillThisProcess();
    });

    const auto recovered = RecoverFromKilledRuns();

    ASSERT_THAT(recovered, SizeIs(1));
    EXPECT_EQ(recovered[0].path, file_);
    EXPECT_EQ(ModeOf(file_), 0444u);
}

TEST_F(KilledRun, IsPutRightForOddNamesToo)
{
    const String odd = folder_.Write(FromUtf8("a\n\t\\ \xE9.pptx"));
    SetMode(odd, 0400);
    InKilledProcess([&] {
        RunJournal journal;
        BeginOn(journal, odd);
        KillThisProcess();
    });

    ASSERT_THAT(RecoverFromKilledRuns(), SizeIs(1));

    EXPECT_EQ(ModeOf(odd), 0400u);
}

TEST_F(KilledRun, IsAboutTheLastFileThatItBegan)
{
    const String other = folder_.Write(u"b.pptx");
    SetMode(other, 0440);
    InKilledProcess([&] {
        RunJournal journal;
        BeginOn(journal, file_);
        SetAttributes(file_, {0, 0444});
        journal.End();
        BeginOn(journal, other);
        KillThisProcess();
    });

    ASSERT_THAT(RecoverFromKilledRuns(), SizeIs(1));

    EXPECT_EQ(ModeOf(other), 0440u);
}

TEST_F(KilledRun, LeavesAFileThatIsInUseToTheStartAfter)
{
    InKilledProcess([this] {
        RunJournal journal;
        BeginOn(journal, file_);
        KillThisProcess();
    });
    {
        const LockedByAnother other(file_, LockedByAnother::Kind::Run);
        EXPECT_THAT(TextsOfRecovery(), IsEmpty());
    }
    EXPECT_EQ(ModeOf(file_), 0644u);

    EXPECT_THAT(TextsOfRecovery(), SizeIs(1));

    EXPECT_EQ(ModeOf(file_), 0444u);
    EXPECT_THAT(Journals(), IsEmpty());
}

TEST_F(KilledRun, LeavesAFileThatIsPutRightForTheRunThatHoldsItNow)
{
    LeaveWritable(file_);
    const FileLock lock(file_);

    EXPECT_THAT(RecoverFromRunsKilledMeanwhile(), SizeIs(1));

    EXPECT_EQ(ModeOf(file_), 0444u);
    EXPECT_THAT(Journals(), IsEmpty());
}

TEST_F(Journal, OfARunThatGoesOnIsLeftAlone)
{
    RunJournal journal;
    BeginOn(journal, file_);

    EXPECT_THAT(TextsOfRecovery(), IsEmpty());

    EXPECT_THAT(Journals(), SizeIs(1));
    EXPECT_EQ(ModeOf(file_), 0644u);
}

TEST_F(Journal, IsThereOnlyWhileARunHasFilesToNote)
{
    {
        RunJournal journal;
        EXPECT_THAT(Journals(), IsEmpty());
        BeginOn(journal, file_);
        EXPECT_THAT(Journals(), SizeIs(1));
        journal.End();
    }
    EXPECT_THAT(Journals(), IsEmpty());
}

TEST_F(Journal, MayBeReadByNobodyElse)
{
    RunJournal journal;
    BeginOn(journal, file_);

    ASSERT_THAT(Journals(), SizeIs(1));
    EXPECT_EQ(ModeOf(FromUtf8(Journals()[0])), 0600u);
}

TEST_F(Journal, TakesNoNoteOfAnotherFilesReplacement)
{
    const String other = folder_.Write(u"b.pptx");
    InKilledProcess([&] {
        RunJournal journal;
        BeginOn(journal, file_);
        const FileDescriptor file(open(ToUtf8(other).c_str(), O_RDONLY | O_CLOEXEC));
        NoteReplacement(ToUtf8(other), file.get());
        std::filesystem::rename(ToUtf8(other), ToUtf8(file_));
        KillThisProcess();
    });

    EXPECT_THAT(TextsOfRecovery(), ElementsAre(HasSubstr("changed since")));
}

TEST_F(Journal, ThatCannotBeMadeIsAFailure)
{
    const String before = ApplicationDataFolder;
    ApplicationDataFolder = folder_.PathOf(u"missing");
    RunJournal journal;

    EXPECT_THROW(journal.Begin(file_, GetAttributes(file_), {}), Failure);
    ApplicationDataFolder.clear();
    EXPECT_THROW(journal.Begin(file_, GetAttributes(file_), {}), Failure);
    EXPECT_THAT(RecoverFromKilledRuns(), IsEmpty());

    ApplicationDataFolder = before;
}

TEST_F(HostileJournal, IsNeverReadThroughALinkOrAPipe)
{
    InKilledProcess([this] {
        RunJournal journal;
        BeginOn(journal, file_);
        KillThisProcess();
    });
    ASSERT_THAT(Journals(), SizeIs(1));
    const std::string elsewhere = ToUtf8(folder_.PathOf(u"journal"));
    const std::string data = ToUtf8(ApplicationDataFolder);
    std::filesystem::rename(Journals()[0], elsewhere);
    std::filesystem::create_symlink(elsewhere, data + "/Run-link.journal");
    ASSERT_EQ(mkfifo((data + "/Run-pipe.journal").c_str(), 0600), 0);
    std::filesystem::create_directory(data + "/Run-folder.journal");

    EXPECT_THAT(TextsOfRecovery(), IsEmpty());

    EXPECT_EQ(ModeOf(file_), 0644u);
    EXPECT_THAT(Journals(), SizeIs(3));
    EXPECT_TRUE(std::filesystem::exists(elsewhere));
}

TEST_F(HostileJournal, OfAnotherUserIsLeftAlone)
{
    InKilledProcess([this] {
        RunJournal journal;
        BeginOn(journal, file_);
        KillThisProcess();
    });
    ASSERT_THAT(Journals(), SizeIs(1));
    if (chown(Journals()[0].c_str(), 65534, 65534) != 0)
        GTEST_SKIP() << "only the superuser can make another user's file";

    EXPECT_THAT(TextsOfRecovery(), IsEmpty());

    EXPECT_EQ(ModeOf(file_), 0644u);
    EXPECT_THAT(Journals(), SizeIs(1));
}

TEST_F(HostileJournal, ThatWasCutAnywhereTouchesNothingWrong)
{
    InKilledProcess([this] {
        RunJournal journal;
        BeginOn(journal, file_);
        Replace("new");
        KillThisProcess();
    });
    ASSERT_THAT(Journals(), SizeIs(1));
    const std::string name = Journals()[0];
    const std::string text = ContentOf(FromUtf8(name));
    const std::size_t firstLine = text.find('\n') + 1;
    ASSERT_LT(firstLine, text.size());

    for (std::size_t length = 0; length < text.size(); ++length) {
        FILE* const file = std::fopen(name.c_str(), "w");
        std::fwrite(text.data(), 1, length, file);
        std::fclose(file);

        // Without its last line the journal does not know the new file.
        EXPECT_THAT(TextsOfRecovery(), SizeIs(length < firstLine ? 0 : 1)) << length;

        EXPECT_EQ(ModeOf(file_), 0644u) << length;
        EXPECT_THAT(Journals(), IsEmpty()) << length;
    }
}

TEST_F(HostileJournal, OfAnySizeIsRemovedUnread)
{
    const std::string name = ToUtf8(ApplicationDataFolder) + "/Run-huge.journal";
    std::fclose(std::fopen(name.c_str(), "w"));
    std::filesystem::resize_file(name, std::uintmax_t{1} << 33);

    EXPECT_THAT(TextsOfRecovery(), IsEmpty());

    EXPECT_THAT(Journals(), IsEmpty());
}

}  // namespace
}  // namespace tessarine
