#pragma once

#include <memory>
#include <optional>

#include "batch/BatchCall.h"
#include "platform/Files.h"
#include "platform/FileState.h"
#include "platform/String.h"
#include "run/BackupFolder.h"

namespace tessarine::batch
{

/// Makes the backups of a run: a copy of each file beside it, as BackupTargetOf names it, that the folder's record
/// tells from other files (run/BackupFolder.h). No file that is there already is ever written over.
class RunBackups
{
public:
    explicit RunBackups(BackupNaming naming);

    /// To be called for each file before it is opened and before the run touches it: its mode is that of its backup,
    /// and what it is then is what the backup must hold. Never raises.
    void Remember(const String& path);

    /// Makes sure that the file, which is open and not yet changed, has a backup. Raises `PermissionDenied` when a file
    /// under the backup's name is not a backup of it, `SharingViolation` when another program has written to the file
    /// since Remember, and as CopyFile does; the file must not be changed then.
    ///
    /// Warns (platform/Warnings.h) when the backup is that of an earlier run and doesn't hold what the file holds now,
    /// and when the backup is there but could not be recorded.
    void Make(const String& path);

private:
    struct Target;

    BackupFolder& FolderFor(const String& backup);
    void KeepOrMake(const Target& target);
    void MakeNumbered(const Target& target);
    void Copy(const Target& target, const String& name);
    void CheckUnchanged(const String& path, const CopiedContent& content) const;

    BackupNaming naming_;
    String rememberedPath_;
    FileAttributes remembered_;
    std::optional<FileState> rememberedState_;
    std::optional<CopiedContent> rememberedContent_;  // of a file so young that its state may hide a change
    String folderPath_;
    std::unique_ptr<BackupFolder> folder_;  // the one of the last backup: files come folder by folder
};

}  // namespace tessarine::batch
