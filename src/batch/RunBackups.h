#pragma once

#include <memory>

#include "batch/BatchCall.h"
#include "files/Files.h"
#include "model/Project.h"
#include "platform/String.h"
#include "run/BackupFolder.h"
#include "saving/CopyFile.h"

namespace tessarine::batch
{

/// Makes the backups of a run: a copy of each file beside it, as BackupTargetOf names it, that the folder's record
/// tells from other files (run/BackupFolder.h). No file that is there already is ever written over.
class RunBackups
{
public:
    /// A dry run makes no backup, and raises and warns as a run that makes them does.
    explicit RunBackups(BackupNaming naming, bool isDryRun = false);

    /// To be called for each file before the run touches it: its mode is that of its backup. Never raises.
    void Remember(const String& path);

    /// Makes sure that the file, which is open and not yet changed, has a backup. Raises `PermissionDenied` when a file
    /// under the backup's name is not a backup of it, and as CopyFile does; the file must not be changed then. What
    /// `check` (Project::Opened) raises goes on, too, and the copy that was made by then goes away.
    ///
    /// Warns (log/Warnings.h) when the backup is that of an earlier run and doesn't hold what the file holds now,
    /// and when the backup is there but could not be recorded.
    void Make(const String& path, const CheckOpened& check);

private:
    struct Target;

    BackupFolder& FolderFor(const String& backup);
    void KeepOrMake(const Target& target);
    void MakeNumbered(const Target& target);
    void Copy(const Target& target, const String& name);

    BackupNaming naming_;
    bool isDryRun_;
    String rememberedPath_;
    FileAttributes remembered_;
    String folderPath_;
    std::unique_ptr<BackupFolder> folder_;  // the one of the last backup: files come folder by folder
};

}  // namespace tessarine::batch
