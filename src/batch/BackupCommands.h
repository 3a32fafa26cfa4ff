#pragma once

#include <cstdint>
#include <string>

#include "batch/BatchCall.h"
#include "platform/String.h"

namespace tessarine::batch
{

/// What became of one file of "restore" or "clean".
struct BackupReport {
    /// FileStatus: 1 restored or removed, 2 there is no backup, 0 failed.
    std::int32_t status = 0;
    String file;
    String backup;  ///< Empty when there is none.
    String error;   ///< Why it failed; empty otherwise.
};

struct BackupSummary {
    std::int64_t files = 0;
    std::int64_t done = 0;       ///< Restored or removed.
    std::int64_t unchanged = 0;  ///< Without a backup.
    std::int64_t failed = 0;

    void Add(const BackupReport& file);
};

/// Copies the file's backup back over it, all or nothing; the backup stays.
BackupReport RestoreFile(const String& path);

/// Deletes the file's backup.
BackupReport RemoveBackup(const String& path);

}  // namespace tessarine::batch
