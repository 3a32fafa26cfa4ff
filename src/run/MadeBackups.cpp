#include "run/MadeBackups.h"

#include <algorithm>

#include "files/Files.h"
#include "platform/Failure.h"
#include "platform/PathKey.h"
#include "run/RestoreFile.h"

namespace tessarine
{

namespace
{

void CheckBackup(const CopiedContent& written, const CopiedContent& found, const String& backup)
{
    if (found != written)
        throw Failure(FailureNumber::PermissionDenied,
                      u"The backup " + backup + u" was changed after the run made it.");
}

}  // namespace

void MadeBackups::Add(const String& path, const String& backup, const CopiedContent& content)
{
    const auto [file, isNew] = files_.try_emplace(PathKey(backup), path);
    if (!isNew && file->second != path) {
        backups_.erase(file->second);
        file->second = path;
    }
    backups_.insert_or_assign(path, Backup{backup, content});
}

std::vector<String> MadeBackups::Files() const
{
    std::vector<String> files;
    files.reserve(backups_.size());
    for (const auto& [path, backup] : backups_)
        files.push_back(path);
    std::ranges::sort(files);
    return files;
}

void MadeBackups::Restore(const String& path, bool takesReadOnly) const
{
    const Backup& backup = backups_.at(path);
    RestoreFile(backup.path, path, takesReadOnly,
                [&](const CopiedContent& found) { CheckBackup(backup.content, found, backup.path); });
}

void MadeBackups::Remove(const String& path)
{
    const auto file = backups_.find(path);
    const Backup& backup = file->second;
    if (FileExists(backup.path)) {
        CheckBackup(backup.content, ContentOfFile(backup.path), backup.path);
        DeleteFile(backup.path);
    }
    files_.erase(PathKey(backup.path));
    backups_.erase(file);
}

}  // namespace tessarine
