#pragma once

#include <cstdint>
#include <vector>

#include "platform/String.h"

namespace tessarine
{

/// The path that a run copies a file to before it touches it: every occurrence of the path's last four characters
/// replaced by ".bak", case counts. "a.ppt" gives "a.bak", "a.pptx" gives "a..bak", and where a folder's name holds the
/// four characters too the result lies in another folder, which mostly does not exist.
String BackupTargetOf(const String& path);

/// The path where restoring and removing look for a backup: up to and including the last ".", then "bak".
///
/// Intended: for an extension of four letters this is not BackupTargetOf ("a.bak" and "a..bak"). The names are those of
/// the backups that people already have.
String BackupPathOf(const String& path);

/// How many files stand where a run over these paths would put its backups, and would replace them.
std::int32_t CountOfBackupsInTheWay(const std::vector<String>& paths);

}  // namespace tessarine
