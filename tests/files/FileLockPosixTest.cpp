#include "files/FileLock.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <optional>

#include "files/Files.h"
#include "files/HeldFolder.h"
#include "files/RandomAccessFile.h"
#include "platform/Failure.h"
#include "support/OrdinaryUser.h"
#include "support/OtherProcess.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

using testing::HasSubstr;

/// What locking a file fails with, as "number text"; empty when it doesn't.
std::string Refusal(const String& path)
{
    try {
        const FileLock lock(path);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, FailureNumber::SharingViolation);
        EXPECT_THAT(ToUtf8(failure.description), HasSubstr(ToUtf8(path)));
        return ToUtf8(failure.description);
    }
    return {};
}

class LockingAFile : public testing::Test
{
protected:
    const TemporaryFolder folder_;
    const String path_ = folder_.Write(u"a.pptx");
};

TEST_F(LockingAFile, KeepsOutAnotherRunUntilItEnds)
{
    {
        const LockedByAnother other(path_, LockedByAnother::Kind::Run);

        EXPECT_THAT(Refusal(path_), HasSubstr("is in use by another run"));
    }
    EXPECT_TRUE(FileLock(path_).IsHeld());
}

TEST_F(LockingAFile, KeepsOutASecondLockOfTheSameProcess)
{
    const FileLock first(path_);

    EXPECT_THAT(Refusal(path_), HasSubstr("is in use by another run"));
}

TEST_F(LockingAFile, HonoursTheLocksOfOtherPrograms)
{
    for (const auto kind :
         {LockedByAnother::Kind::Record, LockedByAnother::Kind::WholeFile, LockedByAnother::Kind::SharedWithAll}) {
        const LockedByAnother other(path_, kind);

        EXPECT_THAT(Refusal(path_), HasSubstr("is in use by another program"));
    }
}

TEST_F(LockingAFile, KeepsOutALinkAndAHardLinkToIt)
{
    const String link = folder_.PathOf(u"link.pptx");
    const String hardLink = folder_.PathOf(u"hard.pptx");
    std::filesystem::create_symlink("a.pptx", ToUtf8(link));
    std::filesystem::create_hard_link(ToUtf8(path_), ToUtf8(hardLink));
    const LockedByAnother other(path_, LockedByAnother::Kind::Run);

    EXPECT_THAT(Refusal(link), HasSubstr("is in use by another run"));
    EXPECT_THAT(Refusal(hardLink), HasSubstr("is in use by another run"));
}

TEST_F(LockingAFile, HonoursALockFileBesideIt)
{
    for (const char16_t* const name : {u"~$a.pptx", u".~lock.a.pptx#"}) {
        const String lockFile = folder_.Write(name);

        EXPECT_THAT(Refusal(path_), HasSubstr("\"" + ToUtf8(name) + "\" says that another program has it open"));
        std::filesystem::remove(ToUtf8(lockFile));
    }
    EXPECT_EQ(Refusal(path_), "");
}

TEST_F(LockingAFile, HonoursALockFileBesideTheFileThatALinkLeadsTo)
{
    const String link = folder_.PathOf(u"elsewhere/link.pptx");
    folder_.MakeFolder(u"elsewhere");
    std::filesystem::create_symlink("../a.pptx", ToUtf8(link));
    folder_.Write(u"~$a.pptx");

    try {
        const FileLock lock(link);
        FAIL() << "locked";
    } catch (const Failure& failure) {
        EXPECT_THAT(ToUtf8(failure.description), HasSubstr("\"~$a.pptx\" says that another program has it open"));
    }
}

TEST_F(LockingAFile, LeavesOtherFilesOfTheFolderFree)
{
    folder_.Write(u"~$b.pptx");
    const LockedByAnother other(folder_.Write(u"b.pptx"), LockedByAnother::Kind::WholeFile);

    EXPECT_TRUE(FileLock(path_).IsHeld());
}

TEST_F(LockingAFile, TakesAFileThatIsReadOnly)
{
    SetMode(folder_.Path(), 0755);
    SetMode(path_, 0444);
    const OrdinaryUser user;

    EXPECT_TRUE(FileLock(path_).IsHeld());
}

TEST_F(LockingAFile, LocksNothingWhereNothingCanBeOpened)
{
    const String pipe = folder_.PathOf(u"pipe");
    ASSERT_EQ(mkfifo(ToUtf8(pipe).c_str(), 0600), 0);

    for (const String& path :
         {folder_.PathOf(u"none"), folder_.PathOf(u"none/file"), folder_.Path(), pipe, String(), String(u"a\0b", 3)})
        EXPECT_FALSE(FileLock(path).IsHeld()) << ToUtf8(path);
}

TEST_F(LockingAFile, LetsTheOwnProcessOpenItAndNoOther)
{
    const FileLock lock(path_);

    EXPECT_EQ(RandomAccessFile(path_).Size(), 7u);
    EXPECT_THROW(OtherProcess([this] {
                     // The copy of this process believes that the lock is its own; a file of its own tells.
                     const int file = open(ToUtf8(path_).c_str(), O_RDONLY | O_CLOEXEC);
                     return LookAtLocks(file, {}) == LockAttempt::Locked;
                 }),
                 std::runtime_error);
}

TEST_F(LockingAFile, KeepsTheOwnProcessFromAnotherFileInItsPlace)
{
    folder_.Write(u"other/a.pptx", "another");
    const String decks = folder_.PathOf(u"decks");
    const String path = folder_.Write(u"decks/a.pptx", "deck");
    const FileLock lock(path);
    std::filesystem::rename(ToUtf8(decks), ToUtf8(folder_.PathOf(u"moved")));
    std::filesystem::create_directory_symlink("other", ToUtf8(decks));

    EXPECT_THROW(GetAttributes(path), Failure);
    try {
        const RandomAccessFile opened(path);
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, FailureNumber::SharingViolation);
        EXPECT_THAT(ToUtf8(failure.description), HasSubstr("was changed by another program"));
    }
}

TEST_F(LockingAFile, OfAnotherRunKeepsReadersOut)
{
    const LockedByAnother other(path_, LockedByAnother::Kind::Run);

    try {
        const RandomAccessFile file(path_);
        FAIL() << "opened";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, FailureNumber::SharingViolation);
        EXPECT_THAT(ToUtf8(failure.description), HasSubstr("in use by another run"));
    }
}

TEST_F(LockingAFile, EndsWithItsScope)
{
    const FileIdentity file = *RandomAccessFile::IdOf(path_);
    {
        const FileLock lock(path_);
        EXPECT_TRUE(FileLock::IsHeldHere(file));
    }

    EXPECT_FALSE(FileLock::IsHeldHere(file));
    EXPECT_NO_THROW(OtherProcess([this] { return FileLock(path_).IsHeld(); }));
}

TEST_F(LockingAFile, GoesOverToTheFileThatTakesItsPlace)
{
    const FileLock lock(path_);
    const FileIdentity old = *RandomAccessFile::IdOf(path_);
    const String next = folder_.Write(u"next");
    FileDescriptor file(open(ToUtf8(next).c_str(), O_RDWR | O_CLOEXEC));
    ASSERT_EQ(TryToLock(file.get()), LockAttempt::Locked);

    FileLock::GiveTo(std::move(file), *RandomAccessFile::IdOf(next), old);

    EXPECT_TRUE(FileLock::IsHeldHere(*RandomAccessFile::IdOf(next)));
    EXPECT_FALSE(FileLock::IsHeldHere(old));
    EXPECT_THAT(Refusal(next), HasSubstr("is in use by another run"));
    EXPECT_EQ(Refusal(path_), "");
}

TEST(LockFiles, AreKnownByTheirNames)
{
    EXPECT_TRUE(IsLockFileName(u"~$report.pptx"));
    EXPECT_TRUE(IsLockFileName(u".~lock.report.pptx#"));
    EXPECT_FALSE(IsLockFileName(u"report.pptx"));
    EXPECT_FALSE(IsLockFileName(u"~report.pptx"));
    EXPECT_FALSE(IsLockFileName(u".~lock.pptx"));
    EXPECT_FALSE(IsLockFileName(u"report~$.pptx"));
    EXPECT_FALSE(IsLockFileName(u""));
}

TEST(FileStates, TellFilesAndTheirChangesApart)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"a", "one");
    const FileState before = *FileStateOf(path);
    std::filesystem::create_symlink("a", ToUtf8(folder.PathOf(u"link")));
    const HeldFolder directory{NativePath(folder.Path())};

    EXPECT_EQ(before.size, 3u);
    EXPECT_EQ(FileStateOf(folder.PathOf(u"link")), before);
    EXPECT_EQ(FileStateIn(directory, "a"), before);
    EXPECT_NE(FileStateIn(directory, "link"), before);
    EXPECT_EQ(FileStateOf(folder.PathOf(u"none")), std::nullopt);
    EXPECT_EQ(FileStateIn(directory, "none"), std::nullopt);

    const timespec times[2] = {{1000, 5}, {1000, 5}};
    ASSERT_EQ(utimensat(AT_FDCWD, ToUtf8(path).c_str(), times, 0), 0);
    EXPECT_EQ(FileStateOf(path)->identity, before.identity);
    EXPECT_EQ(FileStateOf(path)->lastWrite, 1'000'000'000'005);
}

}  // namespace
}  // namespace tessarine
