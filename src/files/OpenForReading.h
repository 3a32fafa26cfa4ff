#pragma once

#include "files/FileDescriptor.h"
#include "platform/NativePath.h"

namespace tessarine
{

/// Whether reading a file moves its time of last access.
enum class AccessTime { Moves, StaysWherePossible };

/// Opens what a path leads to, links followed, to be read. Doesn't wait for the other end of a named pipe; the caller
/// has to look what was opened (StatusOf). On Windows others may read, write and replace the file meanwhile. Not open
/// on failure, with the reason in errno.
FileDescriptor OpenForReading(const NativeString& path, AccessTime accessTime = AccessTime::Moves);

}  // namespace tessarine
