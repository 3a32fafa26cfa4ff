#pragma once

#include <cstdint>
#include <optional>

#include "platform/Failure.h"
#include "platform/String.h"

namespace tessarine
{

/// Per-user folder of the program's data, without a trailing separator; empty until GetFileStorageFolder has run.
/// Holds "Errors.Log".
extern String ApplicationDataFolder;

/// Settles ApplicationDataFolder (the user's data home, the company name, the application's title) and makes the folder
/// with all its parents. False when the folder can't be made, without a message. A path that can't be built at all
/// shows "Unable to get file storage folder path" and gives false.
bool GetFileStorageFolder();

/// Full path of the error log, whether the file is there or not. Not to be asked for before GetFileStorageFolder has
/// run.
String ErrorLogPath();

/// Appends `message`, "- " and the date and time as the system displays them to "Errors.Log" in
/// ApplicationDataFolder, one line ending in CR LF, UTF-8, with control characters as escapes (VisibleText). The file
/// is opened and closed for every line. Never raises: a line that can't be written is lost, and ErrorLogFailure tells
/// why.
///
/// A log of ErrorLogLimit bytes becomes "Errors.Log.old", in place of the one before, and a new one begins.
void WriteErrorLog(const String& message) noexcept;

inline constexpr std::uint64_t ErrorLogLimit = 4 << 20;  ///< In bytes.

/// Why a line was lost, of the first one that this process could not write. Nothing when none was.
const std::optional<Failure>& ErrorLogFailure();

/// The file that this process is at. While it lives, a line of the log that does not hold the file's path is followed
/// by a line that does: "In file " and the path. Several may live at once; the youngest counts.
class LoggedFile
{
public:
    explicit LoggedFile(String path);
    ~LoggedFile();
    LoggedFile(const LoggedFile&) = delete;
    LoggedFile& operator=(const LoggedFile&) = delete;

private:
    friend void WriteErrorLog(const String& message) noexcept;

    String path_;
    LoggedFile* before_;
};

}  // namespace tessarine
