#include "shim/Recorder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>

#include "shim/Protocol.h"

namespace tessarine::torture::record
{

namespace
{

/// The record, opened when it is first asked for and never closed. Below 0 when none is wanted.
int TheRecord()
{
    static const int record = [] {
        const char* path = std::getenv(recordVariable);
        return path == nullptr ? -1
                               : static_cast<int>(syscall(SYS_openat, AT_FDCWD, path,
                                                          O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600));
    }();
    return record;
}

/// The absolute path of what a descriptor is open on, "" when it has none.
std::string PathOf(int descriptor)
{
    std::array<char, 4096> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const long size = syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), path.data(), path.size());
    return size <= 0 ? std::string() : std::string(path.data(), static_cast<std::size_t>(size));
}

std::string AbsolutePath(int folder, const std::string& path)
{
    if (path.starts_with('/'))
        return path;
    if (folder != AT_FDCWD)
        return PathOf(folder) + "/" + path;
    std::array<char, 4096> current{};
    syscall(SYS_getcwd, current.data(), current.size());
    return std::string(current.data()) + "/" + path;
}

bool StatusOf(int descriptor, struct stat& status)
{
    return syscall(SYS_fstat, descriptor, &status) == 0;
}

/// Appends one record in one call.
void Append(RecordKind kind, const struct stat* file, std::uint64_t number, const std::string& path = {},
            const std::string& otherPath = {}, const void* bytes = nullptr, std::size_t count = 0)
{
    const int before = errno;
    RecordHead head;
    head.kind = kind;
    head.pathSize = static_cast<std::uint32_t>(path.size());
    head.otherPathSize = static_cast<std::uint32_t>(otherPath.size());
    head.byteCount = static_cast<std::uint32_t>(count);
    head.device = file == nullptr ? 0 : file->st_dev;
    head.inode = file == nullptr ? 0 : file->st_ino;
    head.number = number;
    std::string whole(reinterpret_cast<const char*>(&head), sizeof head);
    whole += path + otherPath;
    whole.append(static_cast<const char*>(bytes), count);
    syscall(SYS_write, TheRecord(), whole.data(), whole.size());
    errno = before;
}

}  // namespace

bool IsWanted()
{
    return TheRecord() >= 0;
}

bool IsThere(int folder, const char* path)
{
    const int before = errno;
    struct stat status = {};
    const bool isThere = syscall(SYS_newfstatat, folder, path, &status, 0) == 0;
    errno = before;
    return isThere;
}

void Opened(int descriptor, int folder, const char* path, bool wasThere, int flags)
{
    struct stat status = {};
    if (!IsWanted() || !StatusOf(descriptor, status) || !S_ISREG(status.st_mode))
        return;
    if (!wasThere)
        Append(RecordKind::Made, &status, status.st_mode & 07777, AbsolutePath(folder, path));
    else if ((flags & O_TRUNC) != 0)
        Append(RecordKind::CutOff, &status, 0);
}

void Written(int descriptor, std::uint64_t offset, const void* bytes, std::size_t count)
{
    struct stat status = {};
    if (IsWanted() && StatusOf(descriptor, status) && S_ISREG(status.st_mode))
        Append(RecordKind::Written, &status, offset, {}, {}, bytes, count);
}

void CopiedFrom(int source, std::uint64_t sourceOffset, int target, std::uint64_t offset, std::size_t count)
{
    if (!IsWanted())
        return;
    std::string bytes(count, '\0');
    syscall(SYS_pread64, source, bytes.data(), count, sourceOffset);
    Written(target, offset, bytes.data(), count);
}

void CutOff(int descriptor, std::uint64_t length)
{
    struct stat status = {};
    if (IsWanted() && StatusOf(descriptor, status))
        Append(RecordKind::CutOff, &status, length);
}

void Flushed(int descriptor)
{
    struct stat status = {};
    if (IsWanted() && StatusOf(descriptor, status))
        Append(RecordKind::Flushed, &status, 0, S_ISDIR(status.st_mode) ? PathOf(descriptor) : std::string());
}

void ModeSet(int descriptor, mode_t mode)
{
    struct stat status = {};
    if (IsWanted() && StatusOf(descriptor, status))
        Append(RecordKind::ModeSet, &status, mode);
}

void Renamed(int fromFolder, const char* from, int toFolder, const char* to, bool exchanged)
{
    if (IsWanted())
        Append(exchanged ? RecordKind::Exchanged : RecordKind::Renamed, nullptr, 0, AbsolutePath(fromFolder, from),
               AbsolutePath(toFolder, to));
}

void Linked(int folder, const char* path)
{
    struct stat status = {};
    if (IsWanted() && syscall(SYS_newfstatat, folder, path, &status, AT_SYMLINK_NOFOLLOW) == 0)
        Append(RecordKind::Linked, &status, 0, AbsolutePath(folder, path));
}

void Removed(int folder, const char* path)
{
    if (IsWanted())
        Append(RecordKind::Removed, nullptr, 0, AbsolutePath(folder, path));
}

}  // namespace tessarine::torture::record
