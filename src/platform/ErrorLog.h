#pragma once

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
/// ApplicationDataFolder, one line ending in CR LF, UTF-8. The file is opened and closed for every line. Never raises:
/// a line that can't be written is lost.
void WriteErrorLog(const String& message) noexcept;

}  // namespace tessarine
