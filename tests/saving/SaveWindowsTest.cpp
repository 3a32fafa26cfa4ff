#include <gmock/gmock.h>

#include <span>
#include <utility>

#include "files/FileLock.h"
#include "files/Files.h"
#include "files/RandomAccessFile.h"
#include "files/WindowsFiles.h"
#include "log/ErrorLog.h"
#include "log/Treatments.h"
#include "platform/WindowsHeaders.h"
#include "saving/CopyFile.h"
#include "saving/FileDateTime.h"
#include "saving/Leftovers.h"
#include "saving/ReplacementFile.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;

class WindowsSave : public testing::Test
{
protected:
    /// Gives the file a new content; gives the failure's number, 0 for none.
    std::int32_t Save(const std::string& content = "new")
    {
        return Skip([&] {
            try {
                ReplacementFile file(path_);
                file.Write(std::as_bytes(std::span(content)));
                file.Commit();
            } catch (const Failure& failure) {
                text_ = ToUtf8(failure.description);
                throw;
            }
        });
    }

    DWORD Attributes() const { return GetFileAttributesW(NativePath(path_).c_str()); }

    const TemporaryFolder folder_;
    const String path_ = folder_.Write(u"deck.pptx", "old");
    std::string text_;  // of the last failure
};

/// A time of the system, and the same on the clock of the tests.
FILETIME TimeOf(DWORD high)
{
    return {0x12345678, high};
}

}  // namespace

TEST_F(WindowsSave, PutsTheNewContentInPlaceAndLeavesNothingBeside)
{
    EXPECT_EQ(Save(), 0);

    EXPECT_EQ(ContentOf(path_), "new");
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(path_));
}

TEST_F(WindowsSave, KeepsHiddenSystemAndArchive)
{
    constexpr DWORD attributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    ASSERT_TRUE(SetFileAttributesW(NativePath(path_).c_str(), attributes));
    const DWORD before = Attributes();

    EXPECT_EQ(Save(), 0);

    EXPECT_EQ(Attributes(), before);
    EXPECT_EQ(ContentOf(path_), "new");
}

TEST_F(WindowsSave, LeavesAProtectedFileAsItIs)
{
    ASSERT_TRUE(SetFileAttributesW(NativePath(path_).c_str(), FILE_ATTRIBUTE_READONLY));

    EXPECT_EQ(Save(), FailureNumber::AccessDenied);

    EXPECT_EQ(ContentOf(path_), "old");
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(path_));
}

TEST_F(WindowsSave, FailsWhileAReaderDoesNotLetTheFileGo)
{
    const FileDescriptor reader = OpenExisting(NativePath(path_), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);

    EXPECT_EQ(Save(), FailureNumber::SharingViolation);

    EXPECT_THAT(text_, HasSubstr("Another program has it open"));
    EXPECT_EQ(ContentOf(path_), "old");
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(path_));
}

TEST_F(WindowsSave, FailsWhileAnotherProgramMayWrite)
{
    const FileDescriptor writer = OpenExisting(NativePath(path_), GENERIC_WRITE);

    EXPECT_EQ(Save(), FailureNumber::SharingViolation);

    EXPECT_EQ(ContentOf(path_), "old");
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(path_));
}

TEST_F(WindowsSave, ReplacesAFileThatReadersLetGo)
{
    const FileDescriptor reader = OpenExisting(NativePath(path_), GENERIC_READ);

    EXPECT_EQ(Save(), 0);

    EXPECT_EQ(ContentOf(path_), "new");
}

TEST_F(WindowsSave, KeepsThePathLocked)
{
    const FileLock lock(path_);
    const FileIdentity before = *RandomAccessFile::IdOf(path_);

    EXPECT_EQ(Save(), 0);

    const FileIdentity after = *RandomAccessFile::IdOf(path_);
    EXPECT_NE(after, before);
    EXPECT_TRUE(FileLock::IsHeldHere(after));
    EXPECT_FALSE(FileLock::IsHeldHere(before));
}

TEST_F(WindowsSave, ThatWasKilledAfterMovingTheFileAsideIsPutRight)
{
    const String aside = path_ + u".tessarine-AbC123";
    ASSERT_TRUE(MoveFileExW(NativePath(path_).c_str(), NativePath(aside).c_str(), 0));
    folder_.Write(u".tessarine-AbC124", "new");

    RemoveLeftovers(folder_.Path());

    EXPECT_EQ(ContentOf(path_), "old");
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(path_));
}

TEST_F(WindowsSave, ThatWasKilledBeforeRemovingTheOldFileIsPutRight)
{
    folder_.Write(u"deck.pptx.tessarine-AbC123", "older");

    EXPECT_EQ(RemoveLeftovers(folder_.Path()), 1u);

    EXPECT_EQ(ContentOf(path_), "old");
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(path_));
}

TEST_F(WindowsSave, InWorkIsNoLeftover)
{
    ReplacementFile file(path_);

    EXPECT_EQ(RemoveLeftovers(folder_.Path()), 0u);

    const std::string content = "new";
    file.Write(std::as_bytes(std::span(content)));
    file.Commit();
    EXPECT_EQ(ContentOf(path_), "new");
}

TEST_F(WindowsSave, WorksUnderLongAndForeignPaths)
{
    const String folder = folder_.Path() + u"\\" + String(120, u'я') + u"\\" + String(120, u'ж');
    ASSERT_TRUE(EnsureFolderExists(folder));
    const String path = folder + u"\\שלום 😀.pptx";
    CopyFile(path_, path);

    ReplacementFile file(path);
    const std::string content = "new";
    file.Write(std::as_bytes(std::span(content)));
    file.Commit();

    EXPECT_EQ(ReadWholeFile(path), "new");
    EXPECT_THAT(FilesOfFolder(folder), ElementsAre(path));
}

TEST_F(WindowsSave, BacksUpAProtectedFileTwice)
{
    const String backup = folder_.PathOf(u"deck.bak");
    ASSERT_TRUE(SetFileAttributesW(NativePath(path_).c_str(), FILE_ATTRIBUTE_READONLY));

    CopyFile(path_, backup);
    CopyFile(path_, backup);

    EXPECT_EQ(ContentOf(backup), "old");
    EXPECT_EQ(GetAttributes(backup).bits & FileAttribute::ReadOnly, FileAttribute::ReadOnly);
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(backup, path_));
}

TEST_F(WindowsSave, PutsABackupBackOverAProtectedFile)
{
    const String backup = folder_.Write(u"deck.bak", "kept");
    ASSERT_TRUE(SetFileAttributesW(NativePath(path_).c_str(), FILE_ATTRIBUTE_READONLY));

    CopyFileBack(backup, path_);

    EXPECT_EQ(ContentOf(path_), "kept");
    EXPECT_EQ(GetAttributes(path_).bits & FileAttribute::ReadOnly, 0);
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(backup, path_));
}

TEST_F(WindowsSave, WritesIntoAFileWithMoreNamesWhereThatIsAsked)
{
    const String other = folder_.PathOf(u"other.pptx");
    ASSERT_TRUE(CreateHardLinkW(NativePath(other).c_str(), NativePath(path_).c_str(), nullptr));
    const String dataFolder = folder_.MakeFolder(u"data");
    const String before = std::exchange(ApplicationDataFolder, dataFolder);

    ReplacementFile file(path_, ReplacementFile::Missing::Fails, {.inPlaceLinks = true});
    const std::string content = "a longer new content";
    file.Write(std::as_bytes(std::span(content)));
    file.Commit();
    ApplicationDataFolder = before;

    EXPECT_TRUE(file.WasWrittenInPlace());
    EXPECT_EQ(ContentOf(other), content);
    EXPECT_EQ(ContentOf(path_), content);
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(path_, other));
}

TEST_F(WindowsSave, KeepsTheThreeTimesThatWereReadBefore)
{
    const FILETIME creation = TimeOf(0x01C00000);
    const FILETIME lastAccess = TimeOf(0x01C10000);
    const FILETIME lastWrite = TimeOf(0x01C20000);
    {
        const FileDescriptor file = OpenExisting(NativePath(path_), GENERIC_WRITE);
        ASSERT_TRUE(SetFileTime(file.get(), &creation, &lastAccess, &lastWrite));
    }

    const FileTimes times = GetFileDateTime(path_);
    ASSERT_TRUE(times.valid);
    EXPECT_EQ(times.lastWrite.tv_nsec % 1'000'000, 0);
    ASSERT_EQ(Save(), 0);
    EXPECT_TRUE(SetFileDateTime(path_, times));

    const FileTimes now = GetFileDateTime(path_);
    EXPECT_EQ(now.lastWrite.tv_sec, times.lastWrite.tv_sec);
    EXPECT_EQ(now.lastWrite.tv_nsec, times.lastWrite.tv_nsec);
    EXPECT_EQ(now.lastAccess.tv_sec, times.lastAccess.tv_sec);
}

TEST_F(WindowsSave, ReadsTheTimesOfAProtectedFileToo)
{
    const FileTimes before = GetFileDateTime(path_);
    ASSERT_TRUE(SetFileAttributesW(NativePath(path_).c_str(), FILE_ATTRIBUTE_READONLY));

    const FileTimes times = GetFileDateTime(path_);

    EXPECT_TRUE(times.valid);
    EXPECT_EQ(times.lastWrite.tv_sec, before.lastWrite.tv_sec);
    EXPECT_EQ(times.lastWrite.tv_nsec, before.lastWrite.tv_nsec);
    EXPECT_FALSE(SetFileDateTime(path_, times)) << "as long as it is protected";
}

TEST_F(WindowsSave, LeavesTimesAloneThatCouldNotBeRead)
{
    const FileTimes times = GetFileDateTime(folder_.PathOf(u"missing.pptx"));

    EXPECT_FALSE(times.valid);
    EXPECT_FALSE(SetFileDateTime(path_, times));
}

}  // namespace tessarine
