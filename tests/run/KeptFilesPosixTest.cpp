#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "files/FileDescriptor.h"
#include "files/FileLock.h"
#include "files/Files.h"
#include "log/ErrorLog.h"
#include "log/Warnings.h"
#include "RunTest.h"
#include "saving/FileDateTime.h"
#include "saving/RunJournal.h"
#include "support/KilledRun.h"

// What a run does with files that others have in use or change meanwhile, and what it leaves for the next start.

namespace tessarine
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class KeptFiles : public RunTest
{
protected:
    KeptFiles()
        : before_(SetWarningReceiver([this](const String& path, const String& text) {
              warnings_.push_back(Short(ToUtf8(path)) + ": " + Short(ToUtf8(text)));
          }))
    {
        AddPair(u"cat", u"dog");
    }
    ~KeptFiles() override { SetWarningReceiver(before_); }

    bool IsLocked(StringView name) const
    {
        const FileDescriptor file(open(ToUtf8(folder_.PathOf(name)).c_str(), O_RDONLY | O_CLOEXEC));
        return flock(file.get(), LOCK_EX | LOCK_NB) != 0;
    }

    static std::size_t Journals()
    {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(ToUtf8(ApplicationDataFolder)))
            count += entry.path().extension() == ".journal" ? 1 : 0;
        return count;
    }

    std::vector<std::string> warnings_;

private:
    WarningPort before_;
};

using LockedFile = KeptFiles;
using NotedFile = KeptFiles;
using WarningOfARun = KeptFiles;
using FileOfALogLine = KeptFiles;
using LeftoverOfAKilledRun = KeptFiles;

TEST_F(LockedFile, IsPassedOverWithoutABackupOrAChange)
{
    const String path = AddFile(u"a.ppt");
    AddFile(u"b.ppt");
    SetMode(path, 0444);
    project_->options->BackupMode = true;
    project_->options->ProcessReadonlyFiles = true;
    const FileDescriptor other(open(ToUtf8(path).c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_EQ(flock(other.get(), LOCK_EX | LOCK_NB), 0);

    project_->Replacement();

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after nothing", "before b.ppt", "after b.ppt 1"));
    EXPECT_THAT(passedOver_, ElementsAre("a.ppt -2147024864"));
    EXPECT_THAT(Log(), ElementsAre(HasSubstr("is in use by another program")));
    EXPECT_EQ(CallsOf("Presentations.Open a.ppt"), 0u);
    EXPECT_FALSE(FileExists(folder_.PathOf(u"a.bak")));
    EXPECT_TRUE(FileExists(folder_.PathOf(u"b.bak")));
    EXPECT_EQ(ModeOf(path), 0444u);
}

TEST_F(LockedFile, DoesNotEndTheRunAfterAProcessedFile)
{
    AddFile(u"a.ppt");
    const FileLock other(AddFile(u"b.ppt"));
    AddFile(u"c.ppt");

    project_->Replacement();

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 1", "before b.ppt", "after a.ppt 1", "before c.ppt",
                                     "after c.ppt 1"));
    EXPECT_THAT(passedOver_, ElementsAre("b.ppt -2147024864"));
    EXPECT_TRUE(project_->options->IsFindOnly) << "the run has come to its end";
}

TEST_F(LockedFile, IsOneThatAnOfficeProgramHasOpen)
{
    AddFile(u"a.ppt");
    folder_.Write(u".~lock.a.ppt#");

    project_->Replacement();

    EXPECT_THAT(passedOver_, ElementsAre("a.ppt -2147024864"));
    EXPECT_THAT(Log(), ElementsAre(HasSubstr("another program has it open")));
}

TEST_F(LockedFile, IsReadByAFindRunAllTheSame)
{
    const FileLock other(AddFile(u"a.ppt"));

    project_->Search();

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 1"));
}

TEST_F(LockedFile, IsHeldFromBeforeItsBackupToItsReport)
{
    AddFile(u"a.ppt");
    bool atOpen = false;
    bool atSave = false;
    bool atReport = true;
    project_->Opened = [&](const String&, const auto&) { atOpen = IsLocked(u"a.ppt"); };
    powerPoint_.script.On("Presentation.Save", [&] { atSave = IsLocked(u"a.ppt"); });
    project_->AfterFileProcess += [&](const auto&) { atReport = IsLocked(u"a.ppt"); };

    project_->Replacement();

    EXPECT_TRUE(atOpen);
    EXPECT_TRUE(atSave);
    EXPECT_FALSE(atReport);
}

TEST_F(LockedFile, IsGivenUpByARunThatEndsEarly)
{
    AddFile(u"a.ppt");
    powerPoint_.script.FailOnce("Presentation.Close", 1234, u"busy");

    project_->Replacement();

    EXPECT_FALSE(project_->options->IsFindOnly) << "the run has ended early";
    EXPECT_FALSE(IsLocked(u"a.ppt"));
}

TEST_F(NotedFile, IsInTheJournalOnlyWhileItIsChanged)
{
    SetMode(AddFile(u"a.ppt"), 0444);
    AddFile(u"b.ppt");
    project_->options->ProcessReadonlyFiles = true;
    std::vector<std::size_t> journals;
    project_->Opened = [&](const String&, const auto&) { journals.push_back(Journals()); };

    project_->Replacement();

    EXPECT_THAT(journals, ElementsAre(1u, 1u));
    EXPECT_EQ(Journals(), 0u);
    EXPECT_THAT(RecoverFromKilledRuns(), IsEmpty());
}

TEST_F(NotedFile, IsPutRightWhenTheRunThatNotedItWasKilledSinceThisOneBegan)
{
    const String path = AddFile(u"a.ppt");
    SetMode(path, 0444);
    project_->BeforFileProcess += [&](const String&) { LeaveWritable(path); };

    project_->Replacement();

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 0 Read Only File."));
    EXPECT_EQ(ModeOf(path), 0444u);
    EXPECT_THAT(warnings_, ElementsAre("a.ppt: a run that was killed had left it writable; its mode is put back"));
}

TEST_F(NotedFile, OfAnotherPathIsNamedByTheFileThatIsProcessed)
{
    AddFile(u"a.ppt");
    const String other = folder_.Write(u"elsewhere/b.ppt");
    SetMode(other, 0444);
    project_->BeforFileProcess += [&](const String&) { LeaveWritable(other); };

    project_->Replacement();

    EXPECT_EQ(ModeOf(other), 0444u);
    EXPECT_THAT(
        warnings_,
        ElementsAre("a.ppt: elsewhere/b.ppt: a run that was killed had left it writable; its mode is put back"));
}

TEST_F(NotedFile, NeedsNoJournalWhenNothingIsChangedForAWhile)
{
    AddFile(u"a.ppt");
    std::size_t journals = 5;
    project_->Opened = [&](const String&, const auto&) { journals = Journals(); };

    project_->Replacement();

    EXPECT_EQ(journals, 0u);
}

TEST_F(NotedFile, ThatCannotBeNotedIsProcessedWithAWarning)
{
    const String path = AddFile(u"a.ppt");
    SetMode(path, 0444);
    project_->options->ProcessReadonlyFiles = true;
    const String data = ApplicationDataFolder;
    ApplicationDataFolder = folder_.PathOf(u"missing");

    project_->Replacement();

    ApplicationDataFolder = data;
    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 1"));
    EXPECT_EQ(ModeOf(path), 0444u);
    EXPECT_THAT(warnings_, ElementsAre(HasSubstr("a.ppt: its mode and dates won't come back if the run is killed: ")));
}

TEST_F(WarningOfARun, TellsOfAttributesThatDoNotComeBack)
{
    const String path = AddFile(u"a.ppt");
    AddFile(u"b.ppt");
    powerPoint_.script.On("Presentation.Close", [path] {
        if (FileExists(path))
            DeleteFile(path);
    });

    project_->Replacement();

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 1", "before b.ppt", "after b.ppt 1"));
    EXPECT_THAT(warnings_, ElementsAre("a.ppt: its attributes could not be put back: File not found: could not find "
                                       "a.ppt"));
    EXPECT_TRUE(project_->options->IsFindOnly) << "the run has come to its end";
}

TEST_F(WarningOfARun, TellsOfDatesThatDoNotComeBack)
{
    const String path = AddFile(u"a.ppt");
    const String victim = folder_.Write(u"victim");
    project_->options->KeepOriginalFileDate = true;
    powerPoint_.script.On("Presentation.Close", [&] {
        DeleteFile(path);
        std::filesystem::create_symlink(ToUtf8(victim), ToUtf8(path));
    });
    struct stat before = {};
    ASSERT_EQ(stat(ToUtf8(victim).c_str(), &before), 0);

    project_->Replacement();

    EXPECT_THAT(warnings_, testing::Contains("a.ppt: its dates could not be put back"));
    struct stat after = {};
    ASSERT_EQ(stat(ToUtf8(victim).c_str(), &after), 0);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
}

TEST_F(LeftoverOfAKilledRun, IsRemovedByTheNextRunThatSaves)
{
    AddFile(u"a.ppt");
    AddFile(u"sub/b.ppt");
    const String first = folder_.Write(u".tessarine-abcdef");
    const String second = folder_.Write(u"sub/.tessarine-ABC123");
    const String other = folder_.Write(u".tessarine-mine");

    project_->Search();

    EXPECT_TRUE(FileExists(first) && FileExists(second));

    project_->Replacement();

    EXPECT_FALSE(FileExists(first) || FileExists(second));
    EXPECT_TRUE(FileExists(other));
}

TEST_F(FileOfALogLine, IsNamedAfterEachFailure)
{
    powerPoint_.FailOpen(AddFile(u"a.ppt"), 1234, u"damaged");
    AddFile(u"b.ppt");
    powerPoint_.FailOpen(AddFile(u"c.ppt"), 1234, u"damaged, too");

    project_->Search();

    std::vector<std::string> lines;
    for (const std::string& line : log_.LinesWithFiles())
        lines.push_back(Short(line));
    EXPECT_THAT(lines, ElementsAre("damaged", "In file a.ppt", "damaged, too", "In file c.ppt"));
}

}  // namespace tessarine
