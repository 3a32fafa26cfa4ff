#include "support/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <system_error>

#include "platform/NativePath.h"
#include "platform/PathSeparator.h"

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
    return root.string().find('.') == std::string::npos ? root : fs::path("/tmp");
}

/// A folder that nobody else has: one that is there already is not taken.
fs::path MakeNewFolder()
{
    std::random_device random;
    for (int attempt = 0; attempt < 100; ++attempt) {
        const fs::path path = Root() / ("tessarine-test-" + std::to_string(random()));
        if (fs::create_directory(path)) {
            fs::permissions(path, fs::perms::owner_all);
            return path;
        }
    }
    throw std::runtime_error("no temporary folder in " + Root().string());
}

}  // namespace

TemporaryFolder::TemporaryFolder() : path_(PathText(MakeNewFolder().native())) {}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code error;
    const fs::path root(NativePath(path_));
    const auto open = [&](const fs::path& folder) { fs::permissions(folder, fs::perms::owner_all, error); };
    open(root);
    for (fs::recursive_directory_iterator entry(root, error), end; !error && entry != end; entry.increment(error))
        // Windows removes no file that is read-only.
        if (!entry->is_symlink(error) && (PathSeparator == u'\\' || entry->is_directory(error)))
            open(entry->path());
    fs::remove_all(root, error);
}

String TemporaryFolder::PathOf(StringView name) const
{
    String path = path_ + PathSeparator + String(name);
    std::ranges::replace(path, u'/', PathSeparator);
    return path;
}

String TemporaryFolder::Write(StringView name, const std::string& content) const
{
    const fs::path path(NativePath(PathOf(name)));
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << content;
    if (!file.flush())
        throw std::runtime_error("could not write " + path.string());
    return PathOf(name);
}

String TemporaryFolder::MakeFolder(StringView name) const
{
    fs::create_directories(NativePath(PathOf(name)));
    return PathOf(name);
}

std::string ContentOf(StringView path)
{
    std::ifstream file(fs::path(NativePath(path)), std::ios::binary);
    if (!file)
        return "<missing>";
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace tessarine
