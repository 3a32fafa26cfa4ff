#include <cerrno>
#include <string>

#include "files/FileLock.h"
#include "files/FileLockFailures.h"
#include "files/WindowsErrors.h"
#include "files/WindowsFiles.h"
#include "platform/FolderOf.h"
#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

/// The byte that a run locks: so far out that no file has it and that no other program locks it alone. Locks bind
/// others here, so the content has to stay free of them.
constexpr std::uint64_t markOffset = (std::uint64_t{1} << 62) + 0x7e55a;

enum class Strength { Shared, Exclusive };
enum class Outcome { Done, Refused, Impossible };

OVERLAPPED At(std::uint64_t offset)
{
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

Outcome Lock(NativeFile file, Strength strength, std::uint64_t offset, std::uint64_t length)
{
    OVERLAPPED place = At(offset);
    const DWORD flags = LOCKFILE_FAIL_IMMEDIATELY | (strength == Strength::Exclusive ? LOCKFILE_EXCLUSIVE_LOCK : 0);
    if (LockFileEx(file, flags, 0, static_cast<DWORD>(length), static_cast<DWORD>(length >> 32), &place))
        return Outcome::Done;
    const DWORD error = GetLastError();
    return error == ERROR_LOCK_VIOLATION || error == ERROR_IO_PENDING ? Outcome::Refused : Outcome::Impossible;
}

void Unlock(NativeFile file, std::uint64_t offset, std::uint64_t length)
{
    OVERLAPPED place = At(offset);
    UnlockFileEx(file, 0, static_cast<DWORD>(length), static_cast<DWORD>(length >> 32), &place);
}

/// Whether a lock could be had now; leaves none.
Outcome Try(NativeFile file, std::uint64_t offset, std::uint64_t length)
{
    const Outcome outcome = Lock(file, Strength::Shared, offset, length);
    if (outcome == Outcome::Done)
        Unlock(file, offset, length);
    return outcome;
}

/// Who holds the mark: a lock of the whole file covers its neighbour, too.
LockAttempt HolderOfMark(NativeFile file)
{
    return Try(file, markOffset + 1, 1) == Outcome::Done ? LockAttempt::HeldByARun : LockAttempt::HeldByAProgram;
}

/// Raises when a lock file stands beside the path.
void FailIfOpenElsewhere(const NativeString& path)
{
    const NativeString folder(FolderOf(path));
    for (const NativeString& lockFile : LockFileNamesFor(path))
        if (IsThere(folder + lockFile))
            FailForLockFile(path, lockFile);
}

/// The status of what a path leads to. Raises when somebody has the file open and doesn't let it be replaced: that
/// would fail the save, and is better told before any work.
std::optional<FileFacts> StatusForReplacing(const NativeString& path)
{
    const FileDescriptor file = OpenExisting(path, DELETE | FILE_READ_ATTRIBUTES);
    if (file.IsOpen())
        return StatusOf(file.get());
    if (errno == EBUSY)
        FailForHolder(path, LockAttempt::HeldByAProgram);
    return StatusAt(path);
}

}  // namespace

// The lock shows by itself whose it is.
void MarkAsOurs(NativeFile) {}

LockAttempt TryToLock(NativeFile file)
{
    // Whoever opens a file to read it tries a lock for a moment (LookAtLocks). That isn't to fail a save.
    for (DWORD milliseconds = 1;; milliseconds *= 2) {
        const Outcome outcome = Lock(file, Strength::Exclusive, markOffset, 1);
        if (outcome == Outcome::Impossible)
            return LockAttempt::Impossible;
        if (outcome == Outcome::Done)
            break;
        if (milliseconds > 32)
            return HolderOfMark(file);
        Sleep(milliseconds);
    }
    return Try(file, 0, markOffset) == Outcome::Refused ? LockAttempt::HeldByAProgram : LockAttempt::Locked;
}

LockAttempt LookAtLocks(NativeFile file, const FileIdentity& identity)
{
    if (FileLock::IsHeldHere(identity))
        return LockAttempt::Locked;
    switch (Try(file, markOffset, 1)) {
        case Outcome::Done:
            return LockAttempt::Locked;
        case Outcome::Refused:
            return HolderOfMark(file);
        default:
            return LockAttempt::Impossible;
    }
}

FileLock::FileLock(StringView path)
{
    const auto native = NativePathIfValid(path);
    if (!native)
        return;
    // A run that meets this many new files in a row under one path has a reason to stop.
    for (int attempts = 8; attempts > 0; --attempts) {
        // For reading alone, so that any program may open the file meanwhile, whatever it shares with others.
        FileDescriptor file = OpenExisting(*native, GENERIC_READ);
        if (!file.IsOpen() && errno == EBUSY)
            FailForHolder(*native, LockAttempt::HeldByAProgram);
        const auto status = file.IsOpen() ? StatusOf(file.get()) : std::nullopt;
        if (!status || status->kind != FileKind::File)
            return;
        const FileIdentity& identity = status->state.identity;

        const LockAttempt attempt = TryToLock(file.get());
        if (attempt == LockAttempt::HeldByARun || attempt == LockAttempt::HeldByAProgram)
            FailForHolder(*native, attempt);
        // Another run may have put a new file there between the two calls; the lock would be on the old one.
        const auto named = StatusForReplacing(*native);
        if (!named || named->state.identity != identity)
            continue;
        FailIfOpenElsewhere(*native);
        if (HasAttribute(*native, FILE_ATTRIBUTE_REPARSE_POINT))
            FailIfOpenElsewhere(FinalPathOf(file.get()));
        if (attempt != LockAttempt::Locked)
            return;
        Hold(std::move(file), identity, path);
        return;
    }
    if (FileStateOf(path))
        FailForReplacements(*native);
}

}  // namespace tessarine
