#pragma once

#include <time.h>

#include "files/FileState.h"
#include "platform/String.h"

namespace tessarine
{

/// A file's times. On Linux they are moments, to the nanosecond; the time of creation can't be set there and is not
/// kept. On Windows they are what the clock on the wall showed (seconds since 1970 in local time), to the millisecond:
/// they come back wrong by an hour when the clocks were changed in between, which has always been so.
struct FileTimes {
    timespec lastAccess{};  ///< Where the file system keeps it.
    timespec lastWrite{};
    bool valid = false;      ///< False when the times could not be read; setting such times does nothing.
    FileIdentity file = {};  ///< The file that they are of.
    timespec creation{};     ///< On Windows alone.
};

/// Reads a file's times. Never raises: on any error the result is not valid.
FileTimes GetFileDateTime(StringView path);

/// Writes a file's times back: of the file that they were read of, or of its new content (KnownFile). An error writes
/// one line to the error log (procedure SetFileDateTime, "Module modFileDateTime at time"); a file that can't be opened
/// keeps its times without a word. True when the times were set.
bool SetFileDateTime(StringView path, const FileTimes& times);

}  // namespace tessarine
