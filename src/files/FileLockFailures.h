#pragma once

#include <array>

#include "files/FileLock.h"
#include "platform/NativePath.h"

/// What FileLock asks for and raises on every system. For its own files.
namespace tessarine
{

/// The names of the files that other programs put beside a file while they have it open.
std::array<NativeString, 2> LockFileNamesFor(const NativeString& path);

/// For a lock that a run or a program holds.
[[noreturn]] void FailForHolder(const NativeString& path, LockAttempt attempt);

/// For the lock file of another program.
[[noreturn]] void FailForLockFile(const NativeString& path, const NativeString& lockFile);

[[noreturn]] void FailForReplacements(const NativeString& path);

}  // namespace tessarine
