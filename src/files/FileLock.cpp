#include "files/FileLock.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <utility>
#include <vector>

#include "files/FileLockFailures.h"
#include "platform/Failure.h"
#include "platform/FolderOf.h"

namespace tessarine
{

namespace
{

/// What programs put around the name of a file that they have open: PowerPoint, and LibreOffice.
constexpr StringView officePrefix = u"~$";
constexpr StringView libreOfficePrefix = u".~lock.";
constexpr StringView libreOfficeSuffix = u"#";

/// The locks of this process. Few at a time, as a run holds one file.
std::mutex heldLocksGuard;
std::vector<FileLock*> heldLocks;

NativeString Native(StringView ascii)
{
    return NativeName(ToUtf8(ascii));
}

Failure InUse(const NativeString& path, StringView text)
{
    return {FailureNumber::SharingViolation, u'"' + PathText(path) + u"\" " + String(text)};
}

}  // namespace

void FailForHolder(const NativeString& path, LockAttempt attempt)
{
    if (attempt == LockAttempt::HeldByARun)
        throw InUse(path, u"is in use by another run; run it again when that has ended");
    throw InUse(path, u"is in use by another program; close it there and run it again");
}

void FailForLockFile(const NativeString& path, const NativeString& lockFile)
{
    throw InUse(path, u"is in use: \"" + PathText(lockFile) +
                          u"\" says that another program has it open; close it there, or delete that file if it was "
                          u"left behind");
}

void FailForReplacements(const NativeString& path)
{
    throw InUse(path, u"is replaced again and again by another program; run it again when that has ended");
}

void FileLock::Hold(FileDescriptor file, const FileIdentity& identity, StringView path)
{
    file_ = std::move(file);
    identity_ = identity;
    path_ = path;
    const std::scoped_lock guard(heldLocksGuard);
    heldLocks.push_back(this);
}

FileLock::~FileLock()
{
    const std::scoped_lock guard(heldLocksGuard);
    std::erase(heldLocks, this);
}

bool FileLock::IsHeldHere(const FileIdentity& file)
{
    const std::scoped_lock guard(heldLocksGuard);
    return std::ranges::any_of(heldLocks, [&](const FileLock* lock) { return lock->identity_ == file; });
}

bool FileLock::IsOnAnother(StringView path, const FileIdentity& file)
{
    const std::scoped_lock guard(heldLocksGuard);
    return std::ranges::any_of(heldLocks,
                               [&](const FileLock* lock) { return lock->path_ == path && lock->identity_ != file; });
}

void FileLock::GiveTo(FileDescriptor newFile, const FileIdentity& identity, const FileIdentity& old)
{
    const std::scoped_lock guard(heldLocksGuard);
    const auto held = std::ranges::find_if(heldLocks, [&](const FileLock* lock) { return lock->identity_ == old; });
    if (held == heldLocks.end())
        return;
    (*held)->file_ = std::move(newFile);
    (*held)->identity_ = identity;
}

std::array<NativeString, 2> LockFileNamesFor(const NativeString& path)
{
    const NativeString name(FileNameOf(NativeStringView(path)));
    return {Native(officePrefix) + name, Native(libreOfficePrefix) + name + Native(libreOfficeSuffix)};
}

bool IsLockFileName(StringView name)
{
    return name.starts_with(officePrefix) || (name.starts_with(libreOfficePrefix) && name.ends_with(libreOfficeSuffix));
}

}  // namespace tessarine
