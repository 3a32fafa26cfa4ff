#include <fcntl.h>
#include <sys/stat.h>

#include "files/FileFactsPosix.h"
#include "files/FileState.h"
#include "files/HeldFolder.h"
#include "files/Nanoseconds.h"

namespace tessarine
{

namespace
{

FileKind KindFrom(mode_t mode)
{
    if (S_ISREG(mode))
        return FileKind::File;
    if (S_ISDIR(mode))
        return FileKind::Folder;
    return S_ISLNK(mode) ? FileKind::Link : FileKind::Other;
}

}  // namespace

FileState StateFrom(const struct stat& status)
{
    return {{status.st_dev, status.st_ino},
            static_cast<std::uint64_t>(status.st_size),
            Nanoseconds(status.st_mtim),
            Nanoseconds(status.st_ctim)};
}

FileFacts StatusFrom(const struct stat& status, Look look)
{
    return {KindFrom(status.st_mode), StateFrom(status), status.st_nlink, status.st_mode & 07777,
            look == Look::WithOwner ? std::to_string(status.st_uid) : std::string()};
}

std::optional<FileFacts> StatusOf(NativeFile file, Look look)
{
    struct stat status = {};
    return fstat(file, &status) == 0 ? std::optional(StatusFrom(status, look)) : std::nullopt;
}

std::optional<FileState> FileStateOf(NativeFile file, const FileIdentity&)
{
    return FileStateOf(file);
}

std::optional<FileFacts> StatusAt(const NativeString& path, Look look)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 ? std::optional(StatusFrom(status, look)) : std::nullopt;
}

std::optional<FileFacts> StatusThrough(const HeldFolder& folder, const NativeString& name)
{
    struct stat status = {};
    return fstatat(folder.get(), name.c_str(), &status, 0) == 0 ? std::optional(StatusFrom(status, Look::WithoutOwner))
                                                                : std::nullopt;
}

std::optional<FileFacts> StatusIn(const HeldFolder& folder, const NativeString& name, Look look)
{
    struct stat status = {};
    return fstatat(folder.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0
               ? std::optional(StatusFrom(status, look))
               : std::nullopt;
}

}  // namespace tessarine
