#pragma once

#include <time.h>

#include "files/FileDescriptor.h"

/// What TouchFile sets. For its own files.
namespace tessarine
{

/// Now, by the clock that file systems use.
timespec DateOfTouch();

/// Whether a file that is open for reading may get a date. On Windows it has to be opened for that.
#ifdef _WIN32
inline constexpr bool CanSetDatesOfReadFiles = false;
#else
inline constexpr bool CanSetDatesOfReadFiles = true;
#endif

/// Gives an open file this date of last write, or the present one where no other may be set. False with the reason in
/// errno.
bool PutDateOfTouch(NativeFile file, const timespec& date);

}  // namespace tessarine
