#include "run/BackupPaths.h"

#include <unordered_set>
#include <utility>

#include "files/Files.h"
#include "platform/CheckedInteger.h"

namespace tessarine
{

String BackupTargetOf(const String& path)
{
    // The last four characters and not the extension: saved backups of ".pptx" files have the names that come of it.
    constexpr std::size_t extensionLength = 4;
    constexpr StringView backupExtension = u".bak";
    const String extension = path.size() > extensionLength ? path.substr(path.size() - extensionLength) : path;
    String target = path;
    // A path of four characters or fewer is its own extension as a whole; the empty one would be found everywhere.
    if (extension.empty())
        return target;
    for (std::size_t at = target.find(extension); at != String::npos;
         at = target.find(extension, at + backupExtension.size()))
        target.replace(at, extension.size(), backupExtension);
    return target;
}

std::int32_t CountOfBackupsInTheWay(const std::vector<String>& paths)
{
    std::unordered_set<String> backups;
    for (const String& path : paths)
        if (String backup = BackupTargetOf(path); FileExists(backup))
            backups.insert(std::move(backup));
    return Checked<std::int32_t>(static_cast<std::int64_t>(backups.size()));
}

String BackupPathOf(const String& path)
{
    return path.substr(0, path.rfind(u'.') + 1) + u"bak";
}

}  // namespace tessarine
