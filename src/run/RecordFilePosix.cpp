#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "run/RecordFile.h"

namespace tessarine
{

FileDescriptor OpenRecordForReading(const HeldFolder& folder, const NativeString& name)
{
    return FileDescriptor(openat(folder.get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
}

FileDescriptor OpenRecordForAppending(const HeldFolder& folder, const NativeString& name)
{
    constexpr int flags = O_RDWR | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    return FileDescriptor(openat(folder.get(), name.c_str(), flags, 0644));
}

FileDescriptor OpenForMode(const HeldFolder& folder, const NativeString& name)
{
    return OpenRecordForReading(folder, name);
}

RecordLocking TryToLockRecord(NativeFile record)
{
    if (flock(record, LOCK_EX | LOCK_NB) == 0)
        return RecordLocking::Locked;
    return errno == EWOULDBLOCK || errno == EINTR ? RecordLocking::HeldByAnother : RecordLocking::Impossible;
}

void UnlockRecord(NativeFile record)
{
    flock(record, LOCK_UN);
}

bool FlushContent(NativeFile file)
{
    return fdatasync(file) == 0;
}

std::uint32_t NarrowerMode(std::uint32_t mode, std::uint32_t other)
{
    return mode & other;
}

bool GiveOwnerAndMode(NativeFile oldFile, NativeFile newFile)
{
    struct stat status = {};
    return fstat(oldFile, &status) == 0 && fchown(newFile, status.st_uid, status.st_gid) == 0 &&
           fchmod(newFile, status.st_mode & 07777) == 0;
}

bool DeleteIn(const HeldFolder& folder, const NativeString& name)
{
    return unlinkat(folder.get(), name.c_str(), 0) == 0;
}

}  // namespace tessarine
