#include "batch/FileIdentity.h"

#include <filesystem>

#include "platform/NativePath.h"

namespace tessarine::batch
{

std::string FileIdentity::Of(StringView path)
{
    const auto native = NativePathIfValid(path);
    if (!native)
        return ToUtf8(path);  // names no file, so it is like no other path
    const std::filesystem::path named(*native);
    std::error_code error;
    // A link is the file that it leads to; one that leads nowhere is itself.
    if (std::filesystem::is_symlink(named, error)) {
        const auto target = std::filesystem::canonical(named, error);
        if (!error)
            return target.string();
    }

    // The folder is resolved and the name is not: the file itself may be missing, as lost files of a restore are.
    const auto folder = named.has_parent_path() ? named.parent_path() : std::filesystem::path(".");
    const auto [entry, isNew] = folders_.try_emplace(folder.string());
    if (isNew) {
        const auto resolved = std::filesystem::canonical(folder, error);
        entry->second = (error ? folder : resolved).string();
    }
    return entry->second + "/" + named.filename().string();
}

}  // namespace tessarine::batch
