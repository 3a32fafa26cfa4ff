#include "files/FileFailure.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>
#include <ostream>

#include "files/SystemErrors.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

struct Row {
    const char* name;
    int error;
    FileTrouble trouble;
    std::int32_t classic;
    std::int32_t system;
    const char* classicText;

    friend std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.name; }
};

/// Every error that has a kind of its own, and three that have none.
const Row rows[] = {
    {"NoEntry", ENOENT, FileTrouble::FileMissing, 53, -2147024894, "File not found"},
    {"NotAFolder", ENOTDIR, FileTrouble::FolderMissing, 76, -2147024893, "Path not found"},
    {"NameTooLong", ENAMETOOLONG, FileTrouble::FolderMissing, 76, -2147024893, "Path not found"},
    {"LoopOfLinks", ELOOP, FileTrouble::FolderMissing, 76, -2147024893, "Path not found"},
    {"NoAccess", EACCES, FileTrouble::NotPermitted, 70, -2147024891, "Permission denied"},
    {"NotPermitted", EPERM, FileTrouble::NotPermitted, 70, -2147024891, "Permission denied"},
    {"ReadOnlySystem", EROFS, FileTrouble::NotPermitted, 70, -2147024891, "Permission denied"},
    {"IsAFolder", EISDIR, FileTrouble::NotPermitted, 70, -2147024891, "Permission denied"},
    {"ProgramRuns", ETXTBSY, FileTrouble::InUse, 70, -2147024864, "Permission denied"},
    {"Busy", EBUSY, FileTrouble::InUse, 70, -2147024864, "Permission denied"},
    {"DiskFull", ENOSPC, FileTrouble::DiskFull, 61, -2147024784, "Disk full"},
#ifdef EDQUOT
    {"QuotaUsedUp", EDQUOT, FileTrouble::DiskFull, 61, -2147024784, "Disk full"},
#endif
    {"FileTooLarge", EFBIG, FileTrouble::DiskFull, 61, -2147024784, "Disk full"},
    {"MemoryFull", ENOMEM, FileTrouble::OutOfMemory, 7, -2147024882, "Out of memory"},
    {"DeviceFault", EIO, FileTrouble::DeviceFault, 57, -2147024867, "Device I/O error (Input/output error)"},
    {"TooManyFiles", EMFILE, FileTrouble::DeviceFault, 57, -2147024867, "Device I/O error (Too many open files)"},
    {"NoDevice", ENXIO, FileTrouble::DeviceFault, 57, -2147024867, "Device I/O error (No such device or address)"},
};

class FileFailures : public testing::TestWithParam<Row>
{
};

TEST_P(FileFailures, HaveAKindAndANumberInEitherFamily)
{
    const Row& row = GetParam();
    const NativeString path = NativePath(u"/a.pptx");

    EXPECT_EQ(FileTroubleOf(row.error, path), row.trouble);
    EXPECT_EQ(ClassicFileFailure(row.error, "open", path).number, row.classic);
    EXPECT_EQ(SystemFileFailure(row.error, "open", path).number, row.system);
}

TEST_P(FileFailures, AreToldApartByTheirNumbersAgain)
{
    const Row& row = GetParam();
    const NativeString path = NativePath(u"/a.pptx");
    const bool isShared = row.classic == FailureNumber::PermissionDenied;  // by two kinds

    EXPECT_EQ(FileTroubleOf(SystemFileFailure(row.error, "save", path)), row.trouble);
    EXPECT_EQ(FileTroubleOf(ClassicFileFailure(row.error, "open", path)),
              isShared ? std::nullopt : std::optional(row.trouble));
}

TEST(FileFailure, OfAnotherNumberHasNoKind)
{
    EXPECT_EQ(FileTroubleOf(Failure(FailureNumber::Overflow, u"Overflow")), std::nullopt);
}

TEST_P(FileFailures, TellWhatWasTriedOnWhichFile)
{
    const Row& row = GetParam();
    const NativeString path = NativePath(u"/a.pptx");

    EXPECT_EQ(ClassicFileFailure(row.error, "open", path).description,
              FromUtf8(row.classicText) + u": could not open " + PathText(path));
    EXPECT_EQ(SystemFileFailure(row.error, "save", path).description,
              u"Can't save \"" + PathText(path) + u"\": " + FromUtf8(ErrorText(row.error)));
}

INSTANTIATE_TEST_SUITE_P(Errors, FileFailures, testing::ValuesIn(rows),
                         [](const testing::TestParamInfo<Row>& row) { return row.param.name; });

TEST(FileFailure, TellsAMissingFolderFromAMissingFile)
{
    const TemporaryFolder folder;
    const NativeString inFolder = NativePath(folder.PathOf(u"none"));
    const NativeString belowMissing = NativePath(folder.PathOf(u"none/file"));
    const NativeString belowFile = NativePath(folder.Write(u"file") + u"/file");

    EXPECT_EQ(FileTroubleOf(ENOENT, inFolder), FileTrouble::FileMissing);
    EXPECT_EQ(FileTroubleOf(ENOENT, belowMissing), FileTrouble::FolderMissing);
    EXPECT_EQ(FileTroubleOf(ENOENT, belowFile), FileTrouble::FolderMissing);
    EXPECT_EQ(FileTroubleOf(ENOENT, NativeName("file")), FileTrouble::FileMissing);
}

}  // namespace
}  // namespace tessarine
