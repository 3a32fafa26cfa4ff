#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "batch/BatchCall.h"
#include "batch/FilePattern.h"
#include "batch/JobFiles.h"
#include "platform/String.h"
#include "run/BackupFolder.h"

namespace tessarine::batch
{

/// What became of one file of "restore" or "clean".
struct BackupReport {
    /// FileStatus: 1 restored or removed, 2 there is no backup, 0 failed.
    std::int32_t status = 0;
    String file;                     ///< Of the presentation, as the call names it.
    String backup;                   ///< The newest one; empty when there is none.
    String error;                    ///< Why it failed; empty otherwise.
    std::vector<String> older{};     ///< Numbered backups that "clean" has removed as well.
    std::vector<String> warnings{};  ///< What did not go quite as asked, a sentence each.
};

/// What the reports of a command add up to.
struct BackupSummary {
    std::int64_t files = 0;
    std::int64_t done = 0;           ///< Restored, or without backups now.
    std::int64_t backups = 0;        ///< Removed by "clean", several of one file among them.
    std::int64_t unchanged = 0;      ///< Without a backup.
    std::int64_t failed = 0;         ///< Each with its reason in its report.
    std::int64_t skippedLinks = 0;   ///< As of RunSummary.
    std::int64_t notReached = 0;     ///< As of RunSummary.
    std::vector<String> warnings{};  ///< As of RunSummary.

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
    std::unordered_set<String> named_;   // the files of the call, by PathKey
};

/// "restore" and "clean", file by file. A file's backups are those that the record of their folder knows, unchanged
/// (run/BackupFolder.h). With `--any-backup` those of older versions and of the desktop count as well, as far as
/// nothing says that they are another presentation's.
class BackupCommands
{
public:
    BackupCommands(const BatchCall& call, const std::vector<JobFile>& files);

    /// Takes what "clean" removed out of the records.
    ~BackupCommands();
    BackupCommands(const BackupCommands&) = delete;
    BackupCommands& operator=(const BackupCommands&) = delete;

    /// Copies the file's newest backup over it, all or nothing; the backup stays. A file that is in use or read-only
    /// fails; `--read-only` lets the latter be written.
    BackupReport Restore(const String& path);

    /// Deletes all backups of the file.
    BackupReport Clean(const String& path);

private:
    struct Backups;

    template <class Treatment>
    BackupReport Treat(const String& path, Treatment&& treat);
    BackupFolder* FolderFor(const String& backup);
    Backups BackupsOf(const String& path);
    void AddUnrecorded(Backups& backups) const;
    void AddDesktopBackup(Backups& backups) const;

    BackupOwners owners_;
    bool anyBackup_;
    bool readOnly_;
    SaveTerms terms_;
    String folderPath_;
    std::unique_ptr<BackupFolder> folder_;  // of the last file: files come folder by folder
};

}  // namespace tessarine::batch
