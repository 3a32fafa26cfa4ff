#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// Plain reading and writing for the attacks, independent of the program's own. All raise std::runtime_error.
namespace tessarine::torture
{

using Path = std::filesystem::path;
using Status = struct stat;

std::optional<std::string> ContentIfThere(const Path& path);  ///< Nothing when it is missing or no regular file.
void Write(const Path& path, const std::string& content);     ///< In place; a file that is there keeps its mode.

/// Of the name itself, no link followed. Nothing when it is missing.
std::optional<Status> StatusOf(const Path& path);

/// Sets the time of the last change, in whole seconds since 1970.
void SetModified(const Path& path, std::time_t seconds);

std::vector<std::string> NamesIn(const Path& folder);  ///< Hidden ones too, sorted.

/// Everything about a file that nobody else's run may change: bytes, mode, owner, time of the last change. Two are
/// equal when nothing was touched.
struct Snapshot {
    std::optional<std::string> content;
    mode_t mode = 0;
    uid_t user = 0;
    gid_t group = 0;
    ino_t inode = 0;
    std::time_t modified = 0;

    bool operator==(const Snapshot&) const = default;
};
Snapshot SnapshotOf(const Path& path);

}  // namespace tessarine::torture
