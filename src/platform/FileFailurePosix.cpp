#include "platform/FileFailure.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

namespace tessarine
{

namespace
{

bool ParentFolderExists(const std::string& path)
{
    const std::size_t separator = path.rfind('/');
    if (separator == std::string::npos || separator == 0)
        return true;
    struct stat status = {};
    return stat(path.substr(0, separator).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::int32_t NumberOf(int error, const std::string& path)
{
    switch (error) {
        case ENOENT:
            return ParentFolderExists(path) ? FailureNumber::FileNotFound : FailureNumber::PathNotFound;
        case ENOTDIR:
        case ENAMETOOLONG:
        case ELOOP:
            return FailureNumber::PathNotFound;
        case EACCES:
        case EPERM:
        case EROFS:
        case ETXTBSY:
        case EISDIR:
        case EBUSY:
            return FailureNumber::PermissionDenied;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return FailureNumber::DiskFull;
        default:
            return FailureNumber::DeviceIO;
    }
}

std::string TextOf(std::int32_t number, int error)
{
    switch (number) {
        case FailureNumber::FileNotFound:
            return "File not found";
        case FailureNumber::PathNotFound:
            return "Path not found";
        case FailureNumber::PermissionDenied:
            return "Permission denied";
        case FailureNumber::DiskFull:
            return "Disk full";
        default:
            return std::string("Device I/O error (") + std::strerror(error) + ")";
    }
}

}  // namespace

Failure FileFailure(int error, const char* action, const std::string& path)
{
    const std::int32_t number = NumberOf(error, path);
    return {number, FromUtf8(TextOf(number, error) + ": could not " + action + " " + path)};
}

}  // namespace tessarine
