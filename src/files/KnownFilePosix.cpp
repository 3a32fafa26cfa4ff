#include "files/KnownFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "files/FileFailure.h"
#include "files/FileLock.h"

namespace tessarine
{

namespace
{

bool IsOwnAndAlone(const std::string& path, const struct stat& opened)
{
    struct stat named = {};
    return opened.st_uid == geteuid() && opened.st_nlink == 1 && lstat(path.c_str(), &named) == 0 &&
           named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}

}  // namespace

FileDescriptor OpenKnownFile(const NativeString& path, const FileIdentity& known, KnownFileUse use, const char* action)
{
    // Without waiting for the other end of a named pipe.
    const int access = use == KnownFileUse::Times ? O_WRONLY : O_RDONLY;
    FileDescriptor file(open(path.c_str(), access | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status = {};
    if (!file.IsOpen() || fstat(file.get(), &status) != 0)
        throw ClassicFileFailure(errno, action, path);
    const FileIdentity identity{status.st_dev, status.st_ino};
    if (!S_ISREG(status.st_mode) ||
        !(identity == known || FileLock::IsHeldHere(identity) || IsOwnAndAlone(path, status)))
        throw Failure(FailureNumber::PermissionDenied, FromUtf8("Permission denied: could not " + std::string(action) +
                                                                " " + path + " (another file has taken its place)"));
    return file;
}

}  // namespace tessarine
