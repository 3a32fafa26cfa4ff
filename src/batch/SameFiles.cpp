#include "batch/SameFiles.h"

#include <string>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "batch/FileIdentity.h"
#include "files/FileState.h"
#include "platform/NativePath.h"
#include "run/BackupPaths.h"

namespace tessarine::batch
{

std::map<std::size_t, std::size_t> SameFiles(const std::vector<JobFile>& files)
{
    std::map<std::size_t, std::size_t> before;
    std::unordered_map<std::string, std::size_t> last;
    FileIdentity names;
    const auto note = [&](std::string key, std::size_t file) {
        const auto [known, isNew] = last.emplace(std::move(key), file);
        if (isNew)
            return;
        std::size_t& other = before[file];
        other = std::max(other, known->second);
        known->second = file;
    };
    for (std::size_t file = 0; file < files.size(); ++file) {
        const String& path = files[file].path;
        if (!files[file].refusal.empty())
            continue;
        // A file that is missing by now fails, whoever has it in hand.
        const auto native = NativePathIfValid(path);
        if (const auto facts = native ? StatusAt(*native) : std::nullopt)
            note(fmt::format("{} {}", facts->state.identity.device, facts->state.identity.file), file);
        note(names.Of(BackupTargetOf(path)), file);
    }
    return before;
}

}  // namespace tessarine::batch
