#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "batch/BackupCommands.h"
#include "batch/BatchCall.h"
#include "batch/FileReport.h"

namespace tessarine::batch
{

/// How the report for people is worded for one command.
struct TextStyle {
    Command command = Command::Find;
    bool verbose = false;  ///< Unchanged files get a line too.
    bool colors = false;
};

/// The lines of a file, with their line ends; empty for a file about which there is nothing to say. The path's bytes
/// are those that the file system has.
std::string TextLines(const FileReport& file, const OptionSetting& setting, const TextStyle& style);
std::string TextLines(const BackupReport& file, const TextStyle& style);

/// The last line of a report, behind an empty one when anything stands before it.
std::string TextLine(const RunSummary& summary, const TextStyle& style);
std::string TextLine(const BackupSummary& summary, const TextStyle& style);

/// "1 file", "2 files".
std::string Counted(std::int64_t count, std::string_view noun);

/// A text on one line: line ends become blanks.
std::string OnOneLine(std::string text);

/// A text on one line in double quotes, with control characters written as escapes.
std::string Quoted(StringView text);

}  // namespace tessarine::batch
