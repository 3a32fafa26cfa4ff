#include "files/Files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

#include "files/FileDescriptor.h"
#include "files/FileFailure.h"
#include "files/FileLock.h"
#include "files/KnownFile.h"
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

/// What failed, for a failure's text.
constexpr const char* settingAttributes = "set the attributes of";

Status ExistingStatus(const std::string& path)
{
    Status status = {};
    if (stat(path.c_str(), &status) != 0)
        throw ClassicFileFailure(errno, "find", path);
    return status;
}

enum class EntryKind { File, Folder, LinkedFolder, Other };

EntryKind KindOf(int folder, const dirent& entry)
{
    // Most file systems tell the kind with the name, which saves a call for each file of a large folder.
    if (entry.d_type == DT_REG)
        return EntryKind::File;
    if (entry.d_type == DT_DIR)
        return EntryKind::Folder;
    // A link counts as what it leads to. Other file systems leave the kind open.
    Status status = {};
    if (fstatat(folder, entry.d_name, &status, 0) != 0)
        return EntryKind::Other;
    if (!S_ISDIR(status.st_mode))
        return S_ISREG(status.st_mode) ? EntryKind::File : EntryKind::Other;
    const bool isLink = entry.d_type == DT_LNK ||
                        (fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(status.st_mode));
    return isLink ? EntryKind::LinkedFolder : EntryKind::Folder;
}

Failure UnreadFolder(const char* problem, StringView folder, int error)
{
    String text = u"Path not found: could not read the folder " + String(folder);
    if (problem != nullptr)
        text += FromUtf8(std::string(problem) + " (" + std::strerror(error) + ")");
    return {FailureNumber::PathNotFound, text};
}

/// Full paths in the order of their bytes, because that of the directory itself may change from one scan to the next.
std::vector<String> SortedPaths(const std::string& folder, std::vector<std::string>& names)
{
    std::sort(names.begin(), names.end());
    std::vector<String> paths;
    paths.reserve(names.size());
    // Bytes of a name that aren't UTF-8 survive the way through String, see FromUtf8.
    for (const std::string& name : names)
        paths.push_back(FromUtf8(folder + name));
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

String FullPathOf(StringView path)
{
    std::string native = NativePath(path);
    if (native.starts_with('/') || native.empty())
        return String(path);
    while (native.starts_with("./"))
        native.erase(0, native.find_first_not_of('/', 1));
    std::error_code error;
    std::string full = std::filesystem::current_path(error).string();
    if (error)
        throw ClassicFileFailure(error.value(), "find the current folder for", native);
    if (native != "." && !native.empty())
        full += (full.ends_with('/') ? "" : "/") + native;
    return FromUtf8(full);
}

FolderContent ContentOfFolder(StringView folder)
{
    std::string path = NativePath(folder);
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(path.c_str()), &closedir);
    if (!directory)
        throw UnreadFolder(nullptr, folder, 0);
    if (!path.ends_with('/'))
        path += '/';

    std::vector<std::string> files;
    std::vector<std::string> folders;
    std::vector<std::string> linkedFolders;
    // An end and a failure look the same but for the error.
    errno = 0;
    while (const dirent* entry = readdir(directory.get())) {
        const std::string_view name = entry->d_name;
        const EntryKind kind = name == "." || name == ".." ? EntryKind::Other : KindOf(dirfd(directory.get()), *entry);
        if (kind == EntryKind::File)
            files.emplace_back(name);
        else if (kind == EntryKind::Folder)
            folders.emplace_back(name);
        else if (kind == EntryKind::LinkedFolder)
            linkedFolders.emplace_back(name);
        errno = 0;
    }
    if (errno != 0)
        throw UnreadFolder(" to its end", folder, errno);
    return {SortedPaths(path, files), SortedPaths(path, folders), SortedPaths(path, linkedFolders)};
}

void DeleteFile(StringView path)
{
    const std::string nativePath = NativePath(path);
    if (unlink(nativePath.c_str()) != 0)
        throw ClassicFileFailure(errno, "delete", nativePath);
}

FileAttributes GetAttributes(StringView path)
{
    const std::string native = NativePath(path);
    const Status status = ExistingStatus(native);
    const FileIdentity file{status.st_dev, status.st_ino};
    if (FileLock::IsOnAnother(path, file))
        throw ClassicFileFailure(FileTrouble::NotPermitted, "read the attributes of", native,
                                 "another file has taken its place");
    const mode_t mode = status.st_mode & 07777;
    return {(mode & S_IWUSR) ? FileAttribute::Normal : FileAttribute::ReadOnly, mode, file};
}

void SetAttributes(StringView path, const FileAttributes& attributes)
{
    const std::string nativePath = NativePath(path);
    const auto mode = static_cast<mode_t>(attributes.mode);
    // Only a file's owner may set its mode, even to what it is. Others must be able to run over it all the same. Most
    // files have it still, which one call tells.
    if ((ExistingStatus(nativePath).st_mode & 07777) == mode)
        return;
    const FileDescriptor file = OpenKnownFile(nativePath, attributes.file, KnownFileUse::Attributes, settingAttributes);
    if (fchmod(file.get(), mode) != 0)
        throw ClassicFileFailure(errno, settingAttributes, nativePath);
}

void ClearAttributes(StringView path, const FileAttributes& attributes)
{
    const std::string nativePath = NativePath(path);
    const FileDescriptor file = OpenKnownFile(nativePath, attributes.file, KnownFileUse::Attributes, settingAttributes);
    Status opened = {};
    Status named = {};
    if (fstat(file.get(), &opened) != 0 || lstat(nativePath.c_str(), &named) != 0)
        throw ClassicFileFailure(errno, settingAttributes, nativePath);
    // The superuser may change anybody's file, and a link in somebody's folder may lead to any.
    if (S_ISLNK(named.st_mode) && opened.st_uid != geteuid())
        throw ClassicFileFailure(EPERM, "set, through a link, the attributes of another user's file", nativePath);
    // The write bit alone says whether a file is read-only; the others stay for whoever else uses it.
    if (fchmod(file.get(), (opened.st_mode & 07777) | S_IWUSR) != 0)
        throw ClassicFileFailure(errno, settingAttributes, nativePath);
}

}  // namespace tessarine
