#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

#include "platform/String.h"
#include "saving/CopyFile.h"

namespace tessarine
{

/// The backups that runs have made, for as long as they can be put back or removed. Whatever name a backup has, it is
/// found here; and one that has become something else since is left alone.
class MadeBackups
{
public:
    /// A run has made a backup of the file at `path`. An older one of the same file is forgotten. Where it took the
    /// place of another file's, as that of "a.pptm" does in the folder of "a.pptx", the other has none any more.
    void Add(const String& path, const String& backup, const CopiedContent& content);

    bool Has(const String& path) const { return backups_.contains(path); }
    std::vector<String> Files() const;  ///< Those with a backup, in the order of their names.
    bool IsEmpty() const { return backups_.empty(); }

    /// Puts the backup back over the file, all or nothing; the backup stays. The file must have one.
    ///
    /// Raises `PermissionDenied` when the backup doesn't hold any more what the run wrote, when the file is read-only
    /// and that is not to be passed over, or when somebody has it in use; and as CopyFileBack does.
    void Restore(const String& path, bool takesReadOnly) const;

    /// Deletes the backup of the file, which must have one. Raises `PermissionDenied` when it doesn't hold any more
    /// what the run wrote, and as DeleteFile does. One that has gone is forgotten.
    void Remove(const String& path);

private:
    struct Backup {
        String path;
        CopiedContent content;
    };

    std::unordered_map<String, Backup> backups_;  // by file
    std::unordered_map<String, String> files_;    // by PathKey of the backup
};

}  // namespace tessarine
