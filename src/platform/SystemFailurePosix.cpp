#include "platform/SystemFailure.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace tessarine
{

namespace
{

std::int32_t NumberOf(int error, const std::string& path)
{
    switch (error) {
        case ENOENT:
        case ENOTDIR: {
            // The system has one number for both; people want to know whether the folder or the file is missing.
            std::error_code ignored;
            const auto folder = std::filesystem::path(path).parent_path();
            const bool folderThere = folder.empty() || std::filesystem::is_directory(folder, ignored);
            return folderThere ? FailureNumber::SystemFileNotFound : FailureNumber::SystemPathNotFound;
        }
        case EACCES:
        case EPERM:
        case EROFS:
        case EISDIR:
            return FailureNumber::AccessDenied;
        case ETXTBSY:
        case EBUSY:
            return FailureNumber::SharingViolation;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return FailureNumber::SystemDiskFull;
        case ENOMEM:
            return FailureNumber::SystemOutOfMemory;
        default:
            return FailureNumber::WriteFault;
    }
}

}  // namespace

Failure SystemFailure(int error, const std::string& attempt, const std::string& path)
{
    return {NumberOf(error, path), FromUtf8("Can't " + attempt + " \"" + path + "\": " + std::strerror(error))};
}

}  // namespace tessarine
