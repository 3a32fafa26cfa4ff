#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "batch/BatchCall.h"
#include "batch/FilePattern.h"
#include "batch/JobFiles.h"
#include "platform/String.h"

namespace tessarine::batch
{

/// What became of one file of "restore" or "clean".
struct BackupReport {
    /// FileStatus: 1 restored or removed, 2 there is no backup, 0 failed.
    std::int32_t status = 0;
    String file;    ///< Of the presentation, as the call names it.
    String backup;  ///< Empty when there is none.
    String error;   ///< Why it failed; empty otherwise.
};

/// What the reports of a command add up to.
struct BackupSummary {
    std::int64_t files = 0;
    std::int64_t done = 0;       ///< Restored or removed.
    std::int64_t unchanged = 0;  ///< Without a backup.
    std::int64_t failed = 0;     ///< Each with its reason in its report.

    void Add(const BackupReport& file);
};

/// Knows which presentations of a call may own the same backup: "a.pptx" and "a.pptm" share "a..bak".
class BackupOwners
{
public:
    BackupOwners(const BatchCall& call, const std::vector<JobFile>& files);

    /// Another presentation beside `path` whose backup is `backup` too. Only such as the call names, or takes from a
    /// folder, count: a run with the same call is what made the backup.
    std::optional<String> OtherThan(const String& path, const String& backup) const;

private:
    std::vector<FilePattern> patterns_;  // of the call: what a folder scan would take
    std::unordered_set<String> named_;   // the files of the call
};

/// Copies the file's backup back over it, all or nothing; the backup stays.
BackupReport RestoreFile(const String& path, const BackupOwners& owners);

/// Deletes the file's backup.
BackupReport RemoveBackup(const String& path, const BackupOwners& owners);

}  // namespace tessarine::batch
