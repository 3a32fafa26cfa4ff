#include "files/SystemErrors.h"

#include <cerrno>

#include "files/WindowsErrors.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

constexpr unsigned long diskQuotaExceeded = 1295;  // not in all headers

/// The error that errno stands for where many have one value; texts name it.
thread_local unsigned long lastOfManyErrors = 0;

}  // namespace

int ErrnoOf(unsigned long error)
{
    switch (error) {
        case ERROR_SUCCESS:
            return 0;
        case ERROR_FILE_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_DELETE_PENDING:
            return ENOENT;
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_DRIVE:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_DIRECTORY:
        case ERROR_NOT_READY:
            return ENOTDIR;
        case ERROR_FILENAME_EXCED_RANGE:
        case ERROR_BUFFER_OVERFLOW:
            return ENAMETOOLONG;
        case ERROR_CANT_RESOLVE_FILENAME:
            return ELOOP;
        case ERROR_ACCESS_DENIED:
        case ERROR_NETWORK_ACCESS_DENIED:
        case ERROR_CANNOT_MAKE:
            return EACCES;
        case ERROR_PRIVILEGE_NOT_HELD:
        case ERROR_INVALID_OWNER:
            return EPERM;
        case ERROR_WRITE_PROTECT:
            return EROFS;
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_USER_MAPPED_FILE:
        case ERROR_UNABLE_TO_REMOVE_REPLACED:
        case ERROR_UNABLE_TO_MOVE_REPLACEMENT:
        case ERROR_UNABLE_TO_MOVE_REPLACEMENT_2:
            return EBUSY;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
        case diskQuotaExceeded:
        case ERROR_NOT_ENOUGH_QUOTA:
            return ENOSPC;
        case ERROR_FILE_TOO_LARGE:
            return EFBIG;
        case ERROR_NOT_ENOUGH_MEMORY:
        case ERROR_OUTOFMEMORY:
        case ERROR_NO_SYSTEM_RESOURCES:
        case ERROR_COMMITMENT_LIMIT:
            return ENOMEM;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return EEXIST;
        case ERROR_TOO_MANY_OPEN_FILES:
            return EMFILE;
        case ERROR_INVALID_FUNCTION:
        case ERROR_NOT_SUPPORTED:
        case ERROR_CALL_NOT_IMPLEMENTED:
            return ENOSYS;
        case ERROR_INVALID_HANDLE:
            return EBADF;
        default:
            lastOfManyErrors = error;
            return EIO;
    }
}

bool LeaveErrorInErrno()
{
    errno = ErrnoOf(GetLastError());
    return false;
}

std::string ErrorText(int error)
{
    switch (error) {
        case ENOENT:
            return "No such file or directory";
        case ENOTDIR:
            return "No such folder or drive";
        case ENAMETOOLONG:
            return "The name is too long";
        case ELOOP:
            return "Too many links";
        case EACCES:
            return "Permission denied";
        case EPERM:
            return "Operation not permitted";
        case EROFS:
            return "The disk is write-protected";
        case EBUSY:
        case ETXTBSY:
            return "Another program has it open";
        case ENOSPC:
            return "No space left on device";
        case EFBIG:
            return "File too large";
        case ENOMEM:
            return "Not enough memory";
        case EEXIST:
            return "File exists";
        case EISDIR:
            return "Is a folder";
        case EMFILE:
            return "Too many open files";
        case ENXIO:
            return "No such device or address";
        case EIO:
            return lastOfManyErrors == 0 ? "Input/output error" : "Windows error " + std::to_string(lastOfManyErrors);
        default:
            return "Error " + std::to_string(error);
    }
}

}  // namespace tessarine
