#pragma once

#include "platform/String.h"
#include "saving/CopyFile.h"

namespace tessarine
{

/// Copies a backup over a file, all or nothing. Raises `PermissionDenied` when somebody has the file in use, or when it
/// is read-only and the caller doesn't pass over that, and as CopyFileBack does, `complete` included.
void RestoreFile(const String& backup, const String& path, bool takesReadOnly, const CopyComplete& complete = {});

}  // namespace tessarine
