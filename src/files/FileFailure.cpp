#include "files/FileFailure.h"

#include <array>
#include <cerrno>

#include "files/FileState.h"
#include "files/SystemErrors.h"
#include "platform/FolderOf.h"

namespace tessarine
{

namespace
{

struct Numbers {
    FileTrouble trouble;
    std::int32_t classic;
    std::int32_t system;
    const char* classicText;
};

// In the order of FileTrouble, which the assertion holds. The classic family has no number for a file in use, so two
// rows share one there.
constexpr std::array<Numbers, 7> numbers{{
    {FileTrouble::FileMissing, FailureNumber::FileNotFound, FailureNumber::SystemFileNotFound, "File not found"},
    {FileTrouble::FolderMissing, FailureNumber::PathNotFound, FailureNumber::SystemPathNotFound, "Path not found"},
    {FileTrouble::NotPermitted, FailureNumber::PermissionDenied, FailureNumber::AccessDenied, "Permission denied"},
    {FileTrouble::InUse, FailureNumber::PermissionDenied, FailureNumber::SharingViolation, "Permission denied"},
    {FileTrouble::DiskFull, FailureNumber::DiskFull, FailureNumber::SystemDiskFull, "Disk full"},
    {FileTrouble::OutOfMemory, FailureNumber::OutOfMemory, FailureNumber::SystemOutOfMemory, "Out of memory"},
    {FileTrouble::DeviceFault, FailureNumber::DeviceIO, FailureNumber::WriteFault, "Device I/O error"},
}};

static_assert([] {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (numbers[i].trouble != static_cast<FileTrouble>(i))
            return false;
    }
    return numbers.back().trouble == FileTrouble::DeviceFault;
}());

const Numbers& NumbersOf(FileTrouble trouble)
{
    return numbers[static_cast<std::size_t>(trouble)];
}

bool FolderIsThere(const NativeString& path)
{
    const NativeString folder(FolderOf(path));
    if (folder.empty())
        return true;
    const auto status = StatusAt(folder);
    return status && status->kind == FileKind::Folder;
}

}  // namespace

FileTrouble FileTroubleOf(int error, const NativeString& path)
{
    switch (error) {
        case ENOENT:
            // The system has one error for both; users are told which of the two is missing.
            return FolderIsThere(path) ? FileTrouble::FileMissing : FileTrouble::FolderMissing;
        case ENOTDIR:
        case ENAMETOOLONG:
        case ELOOP:
            return FileTrouble::FolderMissing;
        case EACCES:
        case EPERM:
        case EROFS:
        case EISDIR:
            return FileTrouble::NotPermitted;
        case ETXTBSY:
        // Network file systems answer with EBUSY where a Windows program holds the file.
        case EBUSY:
            return FileTrouble::InUse;
        case ENOSPC:
#ifdef EDQUOT
        case EDQUOT:
#endif
        case EFBIG:
            return FileTrouble::DiskFull;
        case ENOMEM:
            return FileTrouble::OutOfMemory;
        default:
            return FileTrouble::DeviceFault;
    }
}

std::optional<FileTrouble> FileTroubleOf(const Failure& failure)
{
    for (const Numbers& row : numbers) {
        const bool isClassic = row.classic == failure.number && row.classic != FailureNumber::PermissionDenied;
        if (isClassic || row.system == failure.number)
            return row.trouble;
    }
    return std::nullopt;
}

Failure ClassicFileFailure(int error, const char* action, const NativeString& path)
{
    const Numbers& row = NumbersOf(FileTroubleOf(error, path));
    std::string text = row.classicText;
    // The texts of the other rows say what is wrong; this one needs the system's words.
    if (row.trouble == FileTrouble::DeviceFault)
        text += " (" + ErrorText(error) + ")";
    return {row.classic, FromUtf8(text + ": could not " + action + " ") + PathText(path)};
}

Failure SystemFileFailure(int error, const char* action, const NativeString& path)
{
    return SystemFileFailure(FileTroubleOf(error, path), action, path, ErrorText(error));
}

Failure ClassicFileFailure(FileTrouble trouble, const char* action, const NativeString& path, const std::string& reason)
{
    const Numbers& row = NumbersOf(trouble);
    return {row.classic, FromUtf8(std::string(row.classicText) + ": could not " + action + " ") + PathText(path) +
                             FromUtf8(" (" + reason + ")")};
}

Failure SystemFileFailure(FileTrouble trouble, const char* action, const NativeString& path, const std::string& reason)
{
    return {NumbersOf(trouble).system,
            FromUtf8(std::string("Can't ") + action + " \"") + PathText(path) + FromUtf8("\": " + reason)};
}

}  // namespace tessarine
