#include "files/Files.h"

#include <algorithm>
#include <cerrno>
#include <memory>

#include "files/FileFailure.h"
#include "files/FileLock.h"
#include "files/FileOwner.h"
#include "files/KnownFile.h"
#include "files/SystemErrors.h"
#include "files/WindowsErrors.h"
#include "files/WindowsFiles.h"
#include "platform/FolderOf.h"
#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

/// What failed, for a failure's text.
constexpr const char* settingAttributes = "set the attributes of";

/// The attributes of what a path leads to; nothing when there is nothing.
std::optional<DWORD> AttributesAt(StringView path)
{
    const auto native = NativePathIfValid(path);
    const DWORD attributes = native ? GetFileAttributesW(native->c_str()) : INVALID_FILE_ATTRIBUTES;
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return std::nullopt;
    // Those of a link are its own.
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return attributes;
    const auto status = StatusAt(*native);
    if (!status)
        return std::nullopt;
    return status->kind == FileKind::Folder ? DWORD{FILE_ATTRIBUTE_DIRECTORY} : status->mode;
}

bool IsFolder(DWORD attributes)
{
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

Failure UnreadFolder(const char* problem, StringView folder)
{
    String text = u"Path not found: could not read the folder " + String(folder);
    if (problem != nullptr)
        text += FromUtf8(std::string(problem) + " (" + ErrorText(ErrnoOf(GetLastError())) + ")");
    return {FailureNumber::PathNotFound, text};
}

/// A unit's place among all characters, in whose order bytes of UTF-8 stand: pairs of surrogates come last.
char16_t PlaceOf(char16_t unit)
{
    constexpr char16_t firstSurrogate = 0xD800;
    constexpr char16_t afterSurrogates = 0xE000;
    if (unit < firstSurrogate)
        return unit;
    return static_cast<char16_t>(unit < afterSurrogates ? unit + 0x2000 : unit - 0x800);
}

/// Full paths in the order that other systems have, which doesn't depend on the file system.
std::vector<String> SortedPaths(const String& folder, std::vector<String>& names)
{
    std::ranges::sort(names, [](const String& a, const String& b) {
        return std::ranges::lexicographical_compare(a, b, {}, PlaceOf, PlaceOf);
    });
    std::vector<String> paths;
    paths.reserve(names.size());
    for (const String& name : names)
        paths.push_back(folder + name);
    return paths;
}

bool IsLink(const WIN32_FIND_DATAW& entry)
{
    constexpr DWORD standsForAnother = 0x20000000;  // in a tag; there are other reparse points than links
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && (entry.dwReserved0 & standsForAnother) != 0;
}

FileFacts ExistingStatus(const NativeString& path)
{
    const auto status = StatusAt(path);
    if (!status)
        throw ClassicFileFailure(errno, "find", path);
    return *status;
}

void PutAttributes(const FileDescriptor& file, DWORD attributes, const NativeString& path)
{
    FILE_BASIC_INFO basic{};  // a time of 0 stays as it is
    basic.FileAttributes = attributes;
    if (!SetFileInformationByHandle(file.get(), FileBasicInfo, &basic, sizeof basic)) {
        LeaveErrorInErrno();
        throw ClassicFileFailure(errno, settingAttributes, path);
    }
}

}  // namespace

bool FileExists(StringView path)
{
    const auto attributes = AttributesAt(path);
    return attributes && !IsFolder(*attributes);
}

bool FolderExists(StringView path)
{
    const auto attributes = AttributesAt(path);
    return attributes && IsFolder(*attributes);
}

// What MakeSureDirectoryPathExists does, folder by folder. That call itself knows only the letters of the system's code
// page, and would make a folder of another name for a user whose name has others.
bool EnsureFolderExists(StringView path)
{
    const auto native = NativePathIfValid(path);
    if (!native)
        return false;
    for (std::size_t end = native->find(L'\\'); end != NativeString::npos; end = native->find(L'\\', end + 1))
        // Drives and folders that are there refuse, and whatever goes wrong shows in the answer.
        CreateDirectoryW(native->substr(0, end).c_str(), nullptr);
    CreateDirectoryW(native->c_str(), nullptr);
    return FolderExists(path);
}

String FullPathOf(StringView path)
{
    const NativeString native = NativePath(path);
    if (native.empty())
        return {};
    const DWORD size = GetFullPathNameW(native.c_str(), 0, nullptr, nullptr);
    NativeString full(size, L'\0');
    const DWORD length = size == 0 ? 0 : GetFullPathNameW(native.c_str(), size, full.data(), nullptr);
    if (length == 0 || length >= size) {
        LeaveErrorInErrno();
        throw ClassicFileFailure(errno, "find the current folder for", native);
    }
    full.resize(length);
    // The current folder, however it was written.
    const bool isHere = path.find_first_not_of(u"./\\") == StringView::npos;
    return isHere ? String(WithoutTrailingSeparator(PathText(full))) : PathText(full);
}

FolderContent ContentOfFolder(StringView folder)
{
    String path(folder);
    if (path.empty() || PathSeparators.find(path.back()) == StringView::npos)
        path += PathSeparator;
    path.back() = PathSeparator;
    WIN32_FIND_DATAW entry{};
    const HANDLE search = FindFirstFileExW(NativePath(path + u'*').c_str(), FindExInfoBasic, &entry,
                                           FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    // The root of a drive may hold nothing at all.
    if (search == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_NOT_FOUND && FolderExists(folder))
        return {};
    if (search == INVALID_HANDLE_VALUE)
        throw UnreadFolder(nullptr, folder);
    const std::unique_ptr<void, BOOL (*)(HANDLE)> owned(search, &FindClose);

    std::vector<String> files;
    std::vector<String> folders;
    std::vector<String> linkedFolders;
    do {
        const String name = PathText(entry.cFileName);
        if (name == u"." || name == u"..")
            continue;
        if (!IsLink(entry))
            (IsFolder(entry.dwFileAttributes) ? folders : files).push_back(name);
        else if (FolderExists(path + name))
            linkedFolders.push_back(name);
        else if (FileExists(path + name))
            files.push_back(name);
    } while (FindNextFileW(search, &entry));
    // An end and a failure look the same but for the error.
    if (GetLastError() != ERROR_NO_MORE_FILES)
        throw UnreadFolder(" to its end", folder);
    return {SortedPaths(path, files), SortedPaths(path, folders), SortedPaths(path, linkedFolders)};
}

void DeleteFile(StringView path)
{
    const NativeString native = NativePath(path);
    if (!DeleteEvenIfProtected(native))
        throw ClassicFileFailure(errno, "delete", native);
}

FileAttributes GetAttributes(StringView path)
{
    const NativeString native = NativePath(path);
    const FileFacts status = ExistingStatus(native);
    if (FileLock::IsOnAnother(path, status.state.identity))
        throw ClassicFileFailure(FileTrouble::NotPermitted, "read the attributes of", native,
                                 "another file has taken its place");
    constexpr DWORD known =
        FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    return {static_cast<std::int32_t>(status.mode & known), status.mode, status.state.identity};
}

void SetAttributes(StringView path, const FileAttributes& attributes)
{
    const NativeString native = NativePath(path);
    const DWORD wanted = SettableAttributes(attributes.mode);
    // Most files have them still, which one look tells without opening them. Those of a link are its own.
    const DWORD named = GetFileAttributesW(native.c_str());
    const bool isItself = named != INVALID_FILE_ATTRIBUTES && (named & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
    if ((isItself && SettableAttributes(named) == wanted) || ExistingStatus(native).mode == wanted)
        return;
    const FileDescriptor file = OpenKnownFile(native, attributes.file, KnownFileUse::Attributes, settingAttributes);
    PutAttributes(file, wanted, native);
}

void ClearAttributes(StringView path, const FileAttributes& attributes)
{
    const NativeString native = NativePath(path);
    const FileDescriptor file = OpenKnownFile(native, attributes.file, KnownFileUse::Attributes, settingAttributes);
    const FileDescriptor itself = OpenItself(native, FILE_READ_ATTRIBUTES);
    const auto named = itself.IsOpen() ? StatusOf(itself.get()) : std::nullopt;
    if (!named)
        throw ClassicFileFailure(errno, settingAttributes, native);
    // An administrator may change anybody's file, and a link in somebody's folder may lead to any.
    if (named->kind == FileKind::Link) {
        const auto opened = StatusOf(file.get(), Look::WithOwner);
        if (!opened || !IsThisUser(opened->owner))
            throw ClassicFileFailure(EPERM, "set, through a link, the attributes of another user's file", native);
    }
    PutAttributes(file, FILE_ATTRIBUTE_NORMAL, native);
}

}  // namespace tessarine
