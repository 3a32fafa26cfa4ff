#include "files/RandomAccessFile.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <gmock/gmock.h>

#include <cerrno>
#include <filesystem>

#include "platform/Failure.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

std::string ReadText(const RandomAccessBytes& bytes, std::uint64_t offset, std::size_t length)
{
    std::string text(length, '\0');
    bytes.Read(offset, std::as_writable_bytes(std::span(text)));
    return text;
}

/// The number of the failure that opening raises; 0 for none.
std::int32_t OpenNumber(StringView path)
{
    try {
        const RandomAccessFile file(path);
    } catch (const Failure& failure) {
        return failure.number;
    }
    return 0;
}

std::int32_t ReadNumber(const RandomAccessBytes& bytes, std::uint64_t offset, std::size_t length)
{
    try {
        ReadText(bytes, offset, length);
    } catch (const Failure& failure) {
        return failure.number;
    }
    return 0;
}

void ExpectRanges(const RandomAccessBytes& bytes)
{
    EXPECT_EQ(bytes.Size(), 10u);
    EXPECT_EQ(ReadText(bytes, 0, 10), "0123456789");
    EXPECT_EQ(ReadText(bytes, 7, 3), "789");
    EXPECT_EQ(ReadText(bytes, 10, 0), "");
    EXPECT_EQ(ReadNumber(bytes, 0, 11), FailureNumber::FileCorrupt);
    EXPECT_EQ(ReadNumber(bytes, 10, 1), FailureNumber::FileCorrupt);
    EXPECT_EQ(ReadNumber(bytes, 1000, 1), FailureNumber::FileCorrupt);
}

TEST(RandomAccessFile, ReadsAnyRangeAndNothingBeyondTheEnd)
{
    const TemporaryFolder folder;

    ExpectRanges(RandomAccessFile(folder.Write(u"file", "0123456789")));
}

TEST(BytesInMemory, ReadAnyRangeAndNothingBeyondTheEnd)
{
    const std::string text = "0123456789";

    ExpectRanges(*BytesInMemory(std::as_bytes(std::span(text))));
    EXPECT_EQ(ReadNumber(*BytesInMemory(std::as_bytes(std::span(text))), ~std::uint64_t{0}, 1),
              FailureNumber::FileCorrupt);
}

TEST(RandomAccessFile, OpensAnEmptyFile)
{
    const TemporaryFolder folder;

    EXPECT_EQ(RandomAccessFile(folder.Write(u"file", "")).Size(), 0u);
}

TEST(RandomAccessFile, FailsToReadAFileThatWasCutMeanwhile)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"file", "0123456789");
    const RandomAccessFile file(path);
    std::filesystem::resize_file(ToUtf8(path), 3);

    EXPECT_EQ(ReadNumber(file, 0, 10), FailureNumber::FileCorrupt);
}

TEST(RandomAccessFile, SaysWhyAFileCantBeOpened)
{
    const TemporaryFolder folder;
    const String file = folder.Write(u"file");

    EXPECT_EQ(OpenNumber(folder.PathOf(u"none")), FailureNumber::SystemFileNotFound);
    EXPECT_EQ(OpenNumber(folder.PathOf(u"none/file")), FailureNumber::SystemPathNotFound);
    EXPECT_EQ(OpenNumber(file + u"/file"), FailureNumber::SystemPathNotFound);
    EXPECT_EQ(OpenNumber(u""), FailureNumber::SystemFileNotFound);
    EXPECT_EQ(OpenNumber(folder.Path()), FailureNumber::AccessDenied);
#ifndef _WIN32  // where no error tells of a name that is too long
    EXPECT_EQ(OpenNumber(folder.PathOf(String(300, u'n'))), FailureNumber::SystemPathNotFound);
#endif
}

}  // namespace

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST(RandomAccessFile, TellsFilesApartWhateverTheirNames)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"file");
    const String other = folder.Write(u"other");
    std::filesystem::create_hard_link(ToUtf8(path), ToUtf8(folder.PathOf(u"link")));

    EXPECT_EQ(RandomAccessFile(path).Id(), RandomAccessFile(folder.PathOf(u"link")).Id());
    EXPECT_FALSE(RandomAccessFile(path).Id() == RandomAccessFile(other).Id());
}

TEST(RandomAccessFile, OfAnotherOwnerCanBeRead)
{
    const TemporaryFolder folder;
    SetMode(folder.Path(), 0755);
    const String path = folder.Write(u"file", "0123456789");
    SetMode(path, 0644);
    const OrdinaryUser user;

    ExpectRanges(RandomAccessFile(path));
}

TEST(RandomAccessFile, WithoutPermissionIsAccessDenied)
{
    const TemporaryFolder folder;
    SetMode(folder.Path(), 0755);
    const String path = folder.Write(u"file");
    SetMode(path, 0000);
    const OrdinaryUser user;

    EXPECT_EQ(OpenNumber(path), FailureNumber::AccessDenied);
}

#endif

}  // namespace tessarine
