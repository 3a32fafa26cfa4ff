#pragma once

#include "files/FileLock.h"
#include "platform/NativePath.h"

/// What FileLock raises. For its own files.
namespace tessarine
{

/// For a lock that a run or a program holds.
[[noreturn]] void FailForHolder(const NativeString& path, LockAttempt attempt);

/// For the lock file of another program.
[[noreturn]] void FailForLockFile(const NativeString& path, const NativeString& lockFile);

[[noreturn]] void FailForReplacements(const NativeString& path);

}  // namespace tessarine
