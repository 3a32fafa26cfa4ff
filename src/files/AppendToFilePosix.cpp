#include "files/AppendToFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>

#include "files/FileDescriptor.h"
#include "files/FileFailure.h"
#include "files/WriteAll.h"
#include "platform/NativePath.h"

namespace tessarine
{

namespace
{

struct stat StatusOf(const FileDescriptor& file, const std::string& path)
{
    struct stat status = {};
    if (!file.IsOpen() || fstat(file.get(), &status) != 0)
        throw ClassicFileFailure(errno, "open", path);
    return status;
}

/// Opens the file, or makes it. Whoever could put a link or a pipe there decides neither where the bytes go nor how
/// long that takes.
FileDescriptor OpenForAppending(const std::string& path)
{
    FileDescriptor file(
        open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666));
    // These are what the system says of a link and of a pipe that nobody reads.
    if (!file.IsOpen() && (errno == ELOOP || errno == ENXIO))
        throw ClassicFileFailure(EACCES, "write (it is not a file)", path);
    if (!S_ISREG(StatusOf(file, path).st_mode))
        throw ClassicFileFailure(EACCES, "write (it is not a file)", path);
    return file;
}

/// Renames a full file. Of several processes at once only one does so: the others find another file under the name.
void PutAway(const FileDescriptor& file, const std::string& path)
{
    struct stat opened = {};
    struct stat named = {};
    // Passed over: lines are better kept in a file that has grown too long than lost.
    if (flock(file.get(), LOCK_EX | LOCK_NB) == 0 && fstat(file.get(), &opened) == 0 &&
        lstat(path.c_str(), &named) == 0 && opened.st_dev == named.st_dev && opened.st_ino == named.st_ino)
        static_cast<void>(std::rename(path.c_str(), (path + ".old").c_str()));
}

}  // namespace

void AppendToFile(StringView path, std::string_view bytes, std::uint64_t limit)
{
    const std::string nativePath = NativePath(path);
    FileDescriptor file = OpenForAppending(nativePath);
    if (static_cast<std::uint64_t>(StatusOf(file, nativePath).st_size) >= limit) {
        PutAway(file, nativePath);
        file = OpenForAppending(nativePath);
    }
    // One call as a rule, which O_APPEND puts at the end in one piece.
    if (!WriteAll(file.get(), bytes))
        throw ClassicFileFailure(errno, "write", nativePath);
}

}  // namespace tessarine
