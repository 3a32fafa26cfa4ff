#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/String.h"
#include "saving/CopyFile.h"

/// The lines of a folder's record of backups (docs/formats/backups.md).
namespace tessarine
{

/// A backup as the record of its folder tells it.
struct RecordedBackup {
    String name;            ///< Of the backup, without a folder.
    String original;        ///< Of the file that it is a copy of; a full path where that lies in another folder.
    CopiedContent content;  ///< What the backup held when it was made.
};

/// The record's line for a backup, with its line end. Any name comes back from it, whatever bytes it holds.
std::string LineOf(const RecordedBackup& backup);

/// What a line (without its end) tells; nothing for one that LineOf can't have made, such as a line that a full disk
/// has cut.
std::optional<RecordedBackup> RecordedBackupIn(std::string_view line);

}  // namespace tessarine
