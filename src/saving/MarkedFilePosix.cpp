#include "saving/MarkedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <string>

#include "platform/FolderOf.h"

namespace tessarine
{

namespace
{

constexpr int waitingForNothing = O_NONBLOCK | O_CLOEXEC;

}  // namespace

std::optional<FileMark> MarkOf(NativeFile file)
{
    struct stat status = {};
    if (fstat(file, &status) != 0)
        return std::nullopt;
    return FileMark{status.st_ino, static_cast<std::uint64_t>(status.st_size), status.st_mtim};
}

bool LookAt(const NativeString& path, std::uint64_t& device, FileMark& mark)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        return false;
    device = status.st_dev;
    mark = {status.st_ino, static_cast<std::uint64_t>(status.st_size), status.st_mtim};
    return true;
}

FileEntry::Dates DatesOf(const FileTimes& times)
{
    return {times.lastAccess, times.lastWrite};
}

bool IsOwnFile(NativeFile file)
{
    struct stat status = {};
    return fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid();
}

FileDescriptor OpenToPutBack(const NativeString& path)
{
    return FileDescriptor(open(path.c_str(), O_RDONLY | O_NOCTTY | waitingForNothing));
}

FileDescriptor OpenToComplete(const NativeString& path)
{
    return FileDescriptor(open(path.c_str(), O_RDWR | O_NOFOLLOW | waitingForNothing));
}

FileDescriptor OpenCopy(const NativeString& path)
{
    return FileDescriptor(open(path.c_str(), O_RDONLY | O_NOFOLLOW | waitingForNothing));
}

bool PutDates(NativeFile file, const timespec& lastAccess, const timespec& lastWrite)
{
    const std::array<timespec, 2> times{lastAccess, lastWrite};
    return futimens(file, times.data()) == 0;
}

bool PutMode(NativeFile file, std::uint32_t mode)
{
    return fchmod(file, static_cast<mode_t>(mode)) == 0;
}

bool IsModeOfRun(std::uint32_t mode, std::uint32_t original)
{
    return mode == (original | S_IWUSR);
}

void RemoveFile(const NativeString& path) noexcept
{
    unlink(path.c_str());
}

bool RenameFile(const NativeString& from, const NativeString& to)
{
    return std::rename(from.c_str(), to.c_str()) == 0;
}

void FlushFolderOf(const NativeString& path)
{
    const std::string folder(FolderOf(path));
    const FileDescriptor opened(open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.IsOpen())
        fsync(opened.get());
}

}  // namespace tessarine
