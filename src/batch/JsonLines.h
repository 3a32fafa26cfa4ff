#pragma once

#include <string>

#include "batch/BackupCommands.h"
#include "batch/BatchCall.h"
#include "batch/FileReport.h"

/// The JSON report: one object a line, keys in a fixed order, UTF-8. Bytes of a path that are not valid UTF-8 become
/// U+FFFD.
namespace tessarine::batch
{

/// "file", "status", "error", "items". An item's "counts" holds the locations of `setting` alone in which the pair was
/// looked for, under the names of --in.
std::string JsonLine(const FileReport& file, const OptionSetting& setting);
std::string JsonLine(const RunSummary& summary);

/// "file", "backup", "status", "error".
std::string JsonLine(const BackupReport& file);

/// Its counts are "files", "restored" or "removed" by the command, "unchanged" and "failed".
std::string JsonLine(const BackupSummary& summary, Command command);

}  // namespace tessarine::batch
