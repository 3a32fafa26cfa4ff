#include <fcntl.h>
#include <linux/magic.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>

#include "files/FileLock.h"
#include "files/FileLockFailures.h"
#include "files/HeldFolder.h"
#include "platform/FolderOf.h"
#include "platform/NativePath.h"

namespace tessarine
{

namespace
{

/// The byte whose shared lock is the mark of a run: so far out that no file has it and no program locks it alone.
constexpr off_t markOffset = (off_t{1} << 62) + 0x7e55a;

struct flock RecordLock(short type, off_t start, off_t length)
{
    struct flock lock = {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = start;
    lock.l_len = length;
    return lock;
}

bool IsMarkedByAnother(int descriptor)
{
    struct flock mark = RecordLock(F_WRLCK, markOffset, 1);
    // A program's lock of the whole file covers the byte as well, but isn't one of this byte alone.
    return fcntl(descriptor, F_OFD_GETLK, &mark) == 0 && mark.l_type == F_RDLCK && mark.l_start == markOffset &&
           mark.l_len == 1;
}

bool IsLockedForWriting(int descriptor)
{
    struct flock lock = RecordLock(F_RDLCK, 0, 0);
    return fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type == F_WRLCK;
}

/// Whether the file lies on a share of Windows. A lock there keeps everybody else from reading, and a run opens the
/// file once more for its backup and for its content.
bool IsOnWindowsShare(int descriptor)
{
    struct statfs system = {};
    if (fstatfs(descriptor, &system) != 0)
        return false;
    const auto type = static_cast<std::uint32_t>(system.f_type);
    return type == CIFS_SUPER_MAGIC || type == SMB2_SUPER_MAGIC || type == SMB_SUPER_MAGIC;
}

/// Raises when a lock file stands beside the path.
void FailIfOpenElsewhere(const std::string& path)
{
    const std::string folder(FolderOf(path));
    for (const std::string& lockFile : LockFileNamesFor(path)) {
        struct stat status = {};
        if (lstat((folder + lockFile).c_str(), &status) == 0)
            FailForLockFile(path, lockFile);
    }
}

/// What the links at a path's end lead to; empty when the system doesn't tell.
std::string EndOfLinks(const std::string& path)
{
    const std::unique_ptr<char, void (*)(void*)> end(realpath(path.c_str(), nullptr), &std::free);
    return end ? end.get() : "";
}

}  // namespace

void MarkAsOurs(int descriptor)
{
    // Of the open file, not of the process: it ends with this descriptor, and not when the file is opened once more
    // and closed.
    struct flock mark = RecordLock(F_RDLCK, markOffset, 1);
    fcntl(descriptor, F_OFD_SETLK, &mark);
}

LockAttempt TryToLock(int descriptor)
{
    if (IsOnWindowsShare(descriptor))
        return LockAttempt::Impossible;
    // First, so that whoever meets the lock sees the mark, too.
    MarkAsOurs(descriptor);
    // Whoever opens a file to read it tries a lock for a moment (RandomAccessFile). That isn't to fail a save.
    for (long milliseconds = 1; flock(descriptor, LOCK_EX | LOCK_NB) != 0; milliseconds *= 2) {
        if (errno == EBADF)
            return LockAttempt::NeedsWriting;
        if (errno != EWOULDBLOCK)
            return LockAttempt::Impossible;
        if (IsMarkedByAnother(descriptor))
            return LockAttempt::HeldByARun;
        if (milliseconds > 32)
            return LockAttempt::HeldByAProgram;
        const timespec pause = {0, milliseconds * 1'000'000};
        nanosleep(&pause, nullptr);
    }
    return IsLockedForWriting(descriptor) ? LockAttempt::HeldByAProgram : LockAttempt::Locked;
}

LockAttempt LookAtLocks(int descriptor, const FileIdentity& file)
{
    if (FileLock::IsHeldHere(file))
        return LockAttempt::Locked;
    if (IsLockedForWriting(descriptor))
        return LockAttempt::HeldByAProgram;
    // Locks of this kind can't be asked for, only tried.
    if (flock(descriptor, LOCK_SH | LOCK_NB) == 0) {
        // Asking must not keep the lock: the writer that comes next would be refused.
        flock(descriptor, LOCK_UN);
        return LockAttempt::Locked;
    }
    if (errno != EWOULDBLOCK)
        return LockAttempt::Impossible;
    return IsMarkedByAnother(descriptor) ? LockAttempt::HeldByARun : LockAttempt::HeldByAProgram;
}

FileLock::FileLock(StringView path)
{
    const auto native = NativePathIfValid(path);
    if (!native)
        return;
    // Held open, so that all attempts are about one folder, whatever is put in its place meanwhile.
    const HeldFolder folder{std::string(FolderOf(*native))};
    const std::string name(FileNameOf(std::string_view(*native)));
    // A run that meets this many new files in a row under one path has a reason to stop.
    for (int attempts = 8; attempts > 0; --attempts) {
        constexpr int flags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
        FileDescriptor file(openat(folder.get(), name.c_str(), O_RDONLY | flags));
        struct stat status = {};
        if (!file.IsOpen() || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
            return;
        const FileIdentity identity{status.st_dev, status.st_ino};

        LockAttempt attempt = TryToLock(file.get());
        if (attempt == LockAttempt::NeedsWriting) {
            file = FileDescriptor(openat(folder.get(), name.c_str(), O_RDWR | flags));
            // A read-only one goes without a lock: a new file may take its place all the same.
            if (!file.IsOpen())
                return;
            if (const auto state = FileStateOf(file.get()); !state || state->identity != identity)
                continue;
            attempt = TryToLock(file.get());
        }
        if (attempt == LockAttempt::HeldByARun || attempt == LockAttempt::HeldByAProgram)
            FailForHolder(*native, attempt);

        // Another run may have put a new file there between the two calls; the lock would be on the old one.
        struct stat named = {};
        if (fstatat(folder.get(), name.c_str(), &named, AT_SYMLINK_NOFOLLOW) != 0)
            continue;
        const bool isLink = S_ISLNK(named.st_mode);
        if (isLink && fstatat(folder.get(), name.c_str(), &named, 0) != 0)
            continue;
        if (FileIdentity{named.st_dev, named.st_ino} != identity)
            continue;

        FailIfOpenElsewhere(*native);
        if (isLink)
            FailIfOpenElsewhere(EndOfLinks(*native));
        if (attempt != LockAttempt::Locked)
            return;
        Hold(std::move(file), identity, path);
        return;
    }
    if (FileStateOf(path))
        FailForReplacements(*native);
}

}  // namespace tessarine
