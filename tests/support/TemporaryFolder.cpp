#include "support/TemporaryFolder.h"

#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace tessarine
{

namespace fs = std::filesystem;

namespace
{

/// Where temporary folders lie. Extensions and backups are read off whole paths, so a dot in the name of a folder
/// above would change what tests see; a folder without one takes its place.
fs::path Root()
{
    const fs::path root = fs::temp_directory_path();
    return root.string().find('.') == std::string::npos ? root : fs::path(P_tmpdir);
}

}  // namespace

TemporaryFolder::TemporaryFolder()
{
    std::string path = (Root() / "tessarine-test-XXXXXX").string();
    if (!mkdtemp(path.data()))
        throw std::runtime_error("no temporary folder: " + path);
    path_ = FromUtf8(path);
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code error;
    const fs::path root(ToUtf8(path_));
    const auto open = [&](const fs::path& folder) { fs::permissions(folder, fs::perms::owner_all, error); };
    open(root);
    for (fs::recursive_directory_iterator entry(root, error), end; !error && entry != end; entry.increment(error))
        if (entry->is_directory(error) && !entry->is_symlink(error))
            open(entry->path());
    fs::remove_all(root, error);
}

String TemporaryFolder::PathOf(StringView name) const
{
    return path_ + u'/' + String(name);
}

String TemporaryFolder::Write(StringView name, const std::string& content) const
{
    const fs::path path(ToUtf8(PathOf(name)));
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << content;
    if (!file.flush())
        throw std::runtime_error("could not write " + path.string());
    return PathOf(name);
}

String TemporaryFolder::MakeFolder(StringView name) const
{
    fs::create_directories(ToUtf8(PathOf(name)));
    return PathOf(name);
}

std::string ContentOf(StringView path)
{
    std::ifstream file(ToUtf8(path), std::ios::binary);
    if (!file)
        return "<missing>";
    return {std::istreambuf_iterator<char>(file), {}};
}

mode_t ModeOf(StringView path)
{
    struct stat status = {};
    if (stat(ToUtf8(path).c_str(), &status) != 0)
        throw std::runtime_error("missing: " + ToUtf8(path));
    return status.st_mode & 07777;
}

void SetMode(StringView path, mode_t mode)
{
    if (chmod(ToUtf8(path).c_str(), mode) != 0)
        throw std::runtime_error("could not set the mode of " + ToUtf8(path));
}

}  // namespace tessarine
