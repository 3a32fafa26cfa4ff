#include "files/Files.h"

#include <gmock/gmock.h>

#include <string>

#include "files/AppendToFile.h"
#include "files/FileLock.h"
#include "files/HeldFolder.h"
#include "files/RandomAccessFile.h"
#include "files/WindowsFiles.h"
#include "log/Treatments.h"
#include "platform/Failure.h"
#include "platform/WindowsHeaders.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;

class WindowsFilesTest : public testing::Test
{
protected:
    DWORD AttributesOf(const String& path) const { return GetFileAttributesW(NativePath(path).c_str()); }
    void PutAttributes(const String& path, DWORD attributes) const
    {
        ASSERT_TRUE(SetFileAttributesW(NativePath(path).c_str(), attributes));
    }

    /// The text with which a file is refused; empty when it is taken.
    static std::string Refusal(const String& path)
    {
        try {
            const FileLock lock(path);
            return {};
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number, FailureNumber::SharingViolation);
            return ToUtf8(failure.description);
        }
    }

    const TemporaryFolder folder_;
};

}  // namespace

TEST_F(WindowsFilesTest, HaveTheirAttributesReadClearedAndPutBack)
{
    // One after the other, as Wine can't hide a file that is protected already.
    for (const DWORD attributes :
         {DWORD{FILE_ATTRIBUTE_READONLY}, DWORD{FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM}}) {
        const String path = folder_.Write(u"a" + FromUtf8(std::to_string(attributes)));
        PutAttributes(path, attributes);
        const DWORD before = AttributesOf(path);

        const FileAttributes saved = GetAttributes(path);
        EXPECT_EQ(static_cast<DWORD>(saved.bits), before & 0x27);

        ClearAttributes(path, saved);
        EXPECT_EQ(AttributesOf(path) & attributes, 0u);

        SetAttributes(path, saved);
        EXPECT_EQ(AttributesOf(path), before);
    }
}

TEST_F(WindowsFilesTest, ThatAreProtectedAreDeletedAllTheSame)
{
    const String path = folder_.Write(u"a.bak");
    PutAttributes(path, FILE_ATTRIBUTE_READONLY);

    DeleteFile(path);

    EXPECT_FALSE(FileExists(path));
}

TEST_F(WindowsFilesTest, ThatAnotherProgramHoldsAreNotDeleted)
{
    const String path = folder_.Write(u"a.bak");
    const FileDescriptor held = OpenExisting(NativePath(path), GENERIC_READ, FILE_SHARE_READ);

    EXPECT_EQ(Skip([&] { DeleteFile(path); }), 70);
}

TEST_F(WindowsFilesTest, WithLongAndForeignPathsAreMadeFoundAndRead)
{
    const String part(100, u'я');
    const String folder = folder_.Path() + u"\\" + part + u"\\" + part + u"\\" + part + u"\\" + part;

    ASSERT_TRUE(EnsureFolderExists(folder));
    const String path = folder + u"\\שלום 😀.pptx";
    AppendToFile(path, "content", 1000);

    EXPECT_TRUE(FileExists(path));
    EXPECT_EQ(ReadWholeFile(path), "content");
    EXPECT_THAT(FilesOfFolder(folder), ElementsAre(path));
    EXPECT_EQ(RandomAccessFile(path).Size(), 7u);
}

TEST_F(WindowsFilesTest, AreTheSameByAnyOfTheirPaths)
{
    const String path = folder_.Write(u"Deck.pptx");
    const String upper = folder_.PathOf(u"DECK.PPTX");

    EXPECT_EQ(RandomAccessFile::IdOf(path), RandomAccessFile::IdOf(upper));
    EXPECT_EQ(RandomAccessFile::IdOf(path), RandomAccessFile::IdOf(u"\\\\?\\" + path));
    EXPECT_NE(RandomAccessFile::IdOf(path), RandomAccessFile::IdOf(folder_.Write(u"b")));
}

TEST_F(WindowsFilesTest, ThatAProgramLetsNobodyReadAreInUse)
{
    const String path = folder_.Write(u"a.pptx");
    const FileDescriptor held = OpenExisting(NativePath(path), GENERIC_READ | GENERIC_WRITE, 0);

    EXPECT_EQ(Skip([&] { RandomAccessFile file(path); }), FailureNumber::SharingViolation);
    EXPECT_EQ(Skip([&] { ReadWholeFile(path); }), 70);
    EXPECT_THAT(Refusal(path), HasSubstr("is in use by another program"));
}

TEST_F(WindowsFilesTest, ThatAReaderDoesNotLetGoAreInUseForARunThatSaves)
{
    const String path = folder_.Write(u"a.pptx");
    const FileDescriptor held = OpenExisting(NativePath(path), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);

    EXPECT_EQ(RandomAccessFile(path).Size(), 7u);
    EXPECT_THAT(Refusal(path), HasSubstr("is in use by another program"));
}

TEST_F(WindowsFilesTest, CanBeOpenedByAnyProgramWhileARunHoldsThem)
{
    const String path = folder_.Write(u"a.pptx");
    const FileLock lock(path);
    ASSERT_TRUE(lock.IsHeld());

    // As PowerPoint opens a presentation.
    const FileDescriptor opened = OpenExisting(NativePath(path), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ);

    EXPECT_TRUE(opened.IsOpen());
    EXPECT_EQ(RandomAccessFile(path).Size(), 7u);
}

TEST_F(WindowsFilesTest, AreHeldByOneRunAtATime)
{
    const String path = folder_.Write(u"a.pptx");
    {
        const FileLock lock(path);
        EXPECT_THAT(Refusal(path), HasSubstr("is in use by another run"));
    }
    EXPECT_EQ(Refusal(path), "");
}

TEST_F(WindowsFilesTest, WithALockOfAllBytesAreHeldByAProgram)
{
    const String path = folder_.Write(u"a.pptx");
    const FileDescriptor file = OpenExisting(NativePath(path), GENERIC_READ | GENERIC_WRITE);
    OVERLAPPED start{};
    ASSERT_TRUE(LockFileEx(file.get(), LOCKFILE_EXCLUSIVE_LOCK, 0, 0xFFFFFFFF, 0x7FFFFFFF, &start));

    EXPECT_THAT(Refusal(path), HasSubstr("is in use by another program"));
    EXPECT_EQ(Skip([&] { RandomAccessFile opened(path); }), FailureNumber::SharingViolation);
}

TEST_F(WindowsFilesTest, BesideALockFileAreInUse)
{
    const String path = folder_.Write(u"a.pptx");
    folder_.Write(u"~$a.pptx");

    EXPECT_THAT(Refusal(path), HasSubstr("\"~$a.pptx\" says that another program has it open"));
}

TEST_F(WindowsFilesTest, LieInAFolderThatStaysWhileItIsHeld)
{
    const String folder = folder_.MakeFolder(u"decks");
    {
        const HeldFolder held{NativePath(folder)};
        ASSERT_TRUE(held.IsOpen());
        EXPECT_FALSE(MoveFileExW(NativePath(folder).c_str(), NativePath(folder_.PathOf(u"moved")).c_str(), 0));
    }
    EXPECT_TRUE(MoveFileExW(NativePath(folder).c_str(), NativePath(folder_.PathOf(u"moved")).c_str(), 0));
}

}  // namespace tessarine
