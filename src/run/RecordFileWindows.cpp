#include <cerrno>

#include "files/FileLock.h"
#include "files/WindowsErrors.h"
#include "files/WindowsFiles.h"
#include "platform/WindowsHeaders.h"
#include "run/RecordFile.h"
#include "saving/KeptAttributes.h"

namespace tessarine
{

namespace
{

/// A byte far beyond the end of any record, so that others can read it all the while.
OVERLAPPED LockedPlace()
{
    OVERLAPPED place{};
    place.OffsetHigh = 0x40000000;
    return place;
}

}  // namespace

FileDescriptor OpenRecordForReading(const HeldFolder& folder, const NativeString& name)
{
    return OpenNoLink(folder.PathOf(name), GENERIC_READ);
}

FileDescriptor OpenRecordForAppending(const HeldFolder& folder, const NativeString& name)
{
    const NativeString path = folder.PathOf(name);
    // Hidden as the name has it elsewhere. The attribute counts for a new file alone.
    FileDescriptor file(CreateFileW(path.c_str(), FILE_APPEND_DATA | GENERIC_READ | SYNCHRONIZE, SharedWithAll, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!file.IsOpen())
        LeaveErrorInErrno();
    return file;
}

FileDescriptor OpenForMode(const HeldFolder& folder, const NativeString& name)
{
    const NativeString path = folder.PathOf(name);
    // For the look whether it is a link.
    const FileDescriptor looked = OpenNoLink(path, FILE_READ_ATTRIBUTES);
    return looked.IsOpen() ? OpenForAttributeChange(path) : FileDescriptor();
}

RecordLocking TryToLockRecord(NativeFile record)
{
    OVERLAPPED place = LockedPlace();
    if (LockFileEx(record, LOCKFILE_FAIL_IMMEDIATELY | LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &place))
        return RecordLocking::Locked;
    const DWORD error = GetLastError();
    errno = ErrnoOf(error);
    return error == ERROR_LOCK_VIOLATION || error == ERROR_IO_PENDING ? RecordLocking::HeldByAnother
                                                                      : RecordLocking::Impossible;
}

void UnlockRecord(NativeFile record)
{
    OVERLAPPED place = LockedPlace();
    UnlockFileEx(record, 0, 1, 0, &place);
}

bool FlushContent(NativeFile file)
{
    if (FlushFileBuffers(file))
        return true;
    LeaveErrorInErrno();
    // Not every system lets a file be flushed that is open for appending alone.
    return errno == EACCES;
}

// Attributes give nobody anything but the one that protects a file; a copy is to have them all.
std::uint32_t NarrowerMode(std::uint32_t, std::uint32_t other)
{
    return static_cast<std::uint32_t>(SettableAttributes(other));
}

bool GiveOwnerAndMode(NativeFile oldFile, NativeFile newFile)
{
    const auto kept = KeptAttributes::Of(oldFile);
    return kept && !kept->GiveToCopy(newFile);
}

bool DeleteIn(const HeldFolder& folder, const NativeString& name)
{
    // A backup of a protected file is one, too.
    return DeleteEvenIfProtected(folder.PathOf(name));
}

}  // namespace tessarine
