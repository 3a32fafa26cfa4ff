#include "platform/Files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

#include "platform/FileDescriptor.h"
#include "platform/FileFailure.h"
#include "platform/NativePath.h"

namespace tessarine
{

namespace
{

using Status = struct stat;

std::optional<Status> StatusOf(StringView path)
{
    const auto native = NativePathIfValid(path);
    Status status = {};
    if (!native || stat(native->c_str(), &status) != 0)
        return std::nullopt;
    return status;
}

Status ExistingStatus(const std::string& path)
{
    Status status = {};
    if (stat(path.c_str(), &status) != 0)
        throw ClassicFileFailure(errno, "find", path);
    return status;
}

enum class EntryKind { File, Folder, Other };

EntryKind KindOf(const std::string& folder, const dirent& entry)
{
    // Most file systems tell the kind with the name, which saves a call for each file of a large folder.
    if (entry.d_type == DT_REG)
        return EntryKind::File;
    if (entry.d_type == DT_DIR)
        return EntryKind::Folder;
    // Other file systems leave the kind open. Asked without following links: a folder that holds a link to its own
    // parent would be scanned without end.
    const std::string path = folder + entry.d_name;
    Status status = {};
    if (entry.d_type != DT_LNK && lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode))
        return EntryKind::Folder;
    // A link counts as the file that it leads to, but never as a folder.
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) ? EntryKind::File : EntryKind::Other;
}

/// The folder's entries of one kind, sorted by their bytes, because the order of the directory itself may change from
/// one scan to the next.
std::vector<String> EntriesOfFolder(StringView folder, EntryKind kind)
{
    std::string path = NativePath(folder);
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(path.c_str()), &closedir);
    if (!directory)
        throw Failure(FailureNumber::PathNotFound, u"Path not found: could not read the folder " + String(folder));
    if (!path.ends_with('/'))
        path += '/';

    std::vector<std::string> names;
    // Bytes of a name that aren't UTF-8 survive the way through String, see FromUtf8.
    while (const dirent* entry = readdir(directory.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != ".." && KindOf(path, *entry) == kind)
            names.emplace_back(name);
    }
    std::sort(names.begin(), names.end());

    std::vector<String> paths;
    paths.reserve(names.size());
    for (const std::string& name : names)
        paths.push_back(FromUtf8(path + name));
    return paths;
}

}  // namespace

bool FileExists(StringView path)
{
    const std::optional<Status> status = StatusOf(path);
    return status && S_ISREG(status->st_mode);
}

bool FolderExists(StringView path)
{
    const std::optional<Status> status = StatusOf(path);
    return status && S_ISDIR(status->st_mode);
}

bool EnsureFolderExists(StringView path)
{
    const auto native = NativePathIfValid(path);
    // Whatever goes wrong shows in the answer: the folder is there or it isn't.
    std::error_code error;
    if (native)
        std::filesystem::create_directories(*native, error);
    return FolderExists(path);
}

std::vector<String> FilesOfFolder(StringView folder)
{
    return EntriesOfFolder(folder, EntryKind::File);
}

std::vector<String> SubfoldersOfFolder(StringView folder)
{
    return EntriesOfFolder(folder, EntryKind::Folder);
}

std::string ReadWholeFile(StringView path)
{
    const std::string nativePath = NativePath(path);
    const FileDescriptor file(open(nativePath.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.IsOpen())
        throw ClassicFileFailure(errno, "open", nativePath);

    std::string content;
    char buffer[64 * 1024];
    for (;;) {
        const ssize_t count = read(file.get(), buffer, sizeof buffer);
        if (count == 0)
            return content;
        if (count > 0)
            content.append(buffer, static_cast<std::size_t>(count));
        else if (errno != EINTR)
            throw ClassicFileFailure(errno, "read", nativePath);
    }
}

void DeleteFile(StringView path)
{
    const std::string nativePath = NativePath(path);
    if (unlink(nativePath.c_str()) != 0)
        throw ClassicFileFailure(errno, "delete", nativePath);
}

FileAttributes GetAttributes(StringView path)
{
    const mode_t mode = ExistingStatus(NativePath(path)).st_mode & 07777;
    return {(mode & S_IWUSR) ? FileAttribute::Normal : FileAttribute::ReadOnly, mode};
}

void SetAttributes(StringView path, const FileAttributes& attributes)
{
    const std::string nativePath = NativePath(path);
    const auto mode = static_cast<mode_t>(attributes.mode);
    // Only a file's owner may set its mode, even to what it is. Others must be able to run over it all the same.
    if ((ExistingStatus(nativePath).st_mode & 07777) == mode)
        return;
    if (chmod(nativePath.c_str(), mode) != 0)
        throw ClassicFileFailure(errno, "set the attributes of", nativePath);
}

void ClearAttributes(StringView path)
{
    // The write bit alone says whether a file is read-only; the others stay for whoever else uses it.
    FileAttributes attributes = GetAttributes(path);
    attributes.mode |= S_IWUSR;
    SetAttributes(path, attributes);
}

}  // namespace tessarine
