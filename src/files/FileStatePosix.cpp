#include <fcntl.h>
#include <sys/stat.h>

#include "files/FileState.h"
#include "files/Nanoseconds.h"
#include "platform/NativePath.h"

namespace tessarine
{

FileState StateFrom(const struct stat& status)
{
    return {{status.st_dev, status.st_ino},
            static_cast<std::uint64_t>(status.st_size),
            Nanoseconds(status.st_mtim),
            Nanoseconds(status.st_ctim)};
}

std::optional<FileState> FileStateOf(int descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0)
        return std::nullopt;
    return StateFrom(status);
}

std::optional<FileState> FileStateOf(StringView path)
{
    const auto native = NativePathIfValid(path);
    struct stat status = {};
    if (!native || stat(native->c_str(), &status) != 0)
        return std::nullopt;
    return StateFrom(status);
}

std::optional<FileState> FileStateIn(int folder, const std::string& name)
{
    struct stat status = {};
    if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return std::nullopt;
    return StateFrom(status);
}

}  // namespace tessarine
