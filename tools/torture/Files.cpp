#include "Files.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tessarine::torture
{

std::optional<Status> StatusOf(const Path& path)
{
    Status status = {};
    if (lstat(path.c_str(), &status) != 0)
        return std::nullopt;
    return status;
}

std::optional<std::string> ContentIfThere(const Path& path)
{
    Status status = {};
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void Write(const Path& path, const std::string& content)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    if (!file.flush())
        throw std::runtime_error("can't write " + path.string());
}

void SetModified(const Path& path, std::time_t seconds)
{
    const timespec times[2] = {{seconds, 0}, {seconds, 0}};
    if (utimensat(AT_FDCWD, path.c_str(), times, 0) != 0)
        throw std::runtime_error("can't set the time of " + path.string());
}

std::vector<std::string> NamesIn(const Path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

Snapshot SnapshotOf(const Path& path)
{
    Snapshot snapshot;
    snapshot.content = ContentIfThere(path);
    if (const auto status = StatusOf(path)) {
        snapshot.mode = status->st_mode;
        snapshot.user = status->st_uid;
        snapshot.group = status->st_gid;
        snapshot.inode = status->st_ino;
        snapshot.modified = status->st_mtime;
    }
    return snapshot;
}

}  // namespace tessarine::torture
