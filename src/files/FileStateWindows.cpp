#include <cerrno>
#include <memory>

#include "files/FileState.h"
#include "files/HeldFolder.h"
#include "files/WindowsErrors.h"
#include "files/WindowsFiles.h"
#include "platform/WindowsHeaders.h"

#include <aclapi.h>

namespace tessarine
{

namespace
{

constexpr std::uint64_t Joined(DWORD high, DWORD low)
{
    return std::uint64_t{high} << 32 | low;
}

/// Whether an open file with a reparse point is a link; there are others, such as files that lie in a cloud.
bool IsLink(NativeFile file)
{
    FILE_ATTRIBUTE_TAG_INFO tag{};
    constexpr DWORD standsForAnother = 0x20000000;
    return GetFileInformationByHandleEx(file, FileAttributeTagInfo, &tag, sizeof tag) &&
           (tag.ReparseTag & standsForAnother) != 0;
}

FileKind KindOf(NativeFile file, DWORD attributes)
{
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && IsLink(file))
        return FileKind::Link;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileKind::Folder : FileKind::File;
}

std::string OwnerOf(NativeFile file)
{
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetSecurityInfo(file, SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr, nullptr, nullptr,
                        &descriptor) != ERROR_SUCCESS)
        return {};
    const std::unique_ptr<void, void (*)(void*)> owned(descriptor, [](void* memory) { LocalFree(memory); });
    return TextOfIdentifier(owner);
}

/// What a look needs of an open file.
constexpr DWORD AccessFor(Look look)
{
    return FILE_READ_ATTRIBUTES | (look == Look::WithOwner ? READ_CONTROL : 0);
}

}  // namespace

std::optional<FileFacts> StatusOf(NativeFile file, Look look)
{
    BY_HANDLE_FILE_INFORMATION information{};
    FILE_BASIC_INFO basic{};
    if (!GetFileInformationByHandle(file, &information)) {
        LeaveErrorInErrno();
        // Of a pipe or a device it knows nothing more.
        const DWORD type = file == NoFile ? FILE_TYPE_UNKNOWN : GetFileType(file);
        return type == FILE_TYPE_CHAR || type == FILE_TYPE_PIPE ? std::optional(FileFacts()) : std::nullopt;
    }
    if (!GetFileInformationByHandleEx(file, FileBasicInfo, &basic, sizeof basic)) {
        LeaveErrorInErrno();
        return std::nullopt;
    }
    FileFacts status;
    status.kind = KindOf(file, information.dwFileAttributes);
    status.state.identity = {information.dwVolumeSerialNumber,
                             Joined(information.nFileIndexHigh, information.nFileIndexLow)};
    status.state.size = Joined(information.nFileSizeHigh, information.nFileSizeLow);
    status.state.lastWrite = NanosecondsFrom(basic.LastWriteTime.QuadPart);
    status.state.lastChange = NanosecondsFrom(basic.ChangeTime.QuadPart);
    status.names = information.nNumberOfLinks;
    status.mode = SettableAttributes(information.dwFileAttributes);
    if (look == Look::WithOwner)
        status.owner = OwnerOf(file);
    return status;
}

std::optional<FileState> FileStateOf(NativeFile file, const FileIdentity& identity)
{
    FILE_STANDARD_INFO standard{};
    FILE_BASIC_INFO basic{};
    if (!GetFileInformationByHandleEx(file, FileStandardInfo, &standard, sizeof standard) ||
        !GetFileInformationByHandleEx(file, FileBasicInfo, &basic, sizeof basic)) {
        LeaveErrorInErrno();
        return std::nullopt;
    }
    return FileState{identity, static_cast<std::uint64_t>(standard.EndOfFile.QuadPart),
                     NanosecondsFrom(basic.LastWriteTime.QuadPart), NanosecondsFrom(basic.ChangeTime.QuadPart)};
}

std::optional<FileFacts> StatusAt(const NativeString& path, Look look)
{
    const FileDescriptor file = OpenExisting(path, AccessFor(look));
    return file.IsOpen() ? StatusOf(file.get(), look) : std::nullopt;
}

std::optional<FileFacts> StatusThrough(const HeldFolder& folder, const NativeString& name)
{
    return StatusAt(folder.PathOf(name));
}

std::optional<FileFacts> StatusIn(const HeldFolder& folder, const NativeString& name, Look look)
{
    const FileDescriptor file = OpenItself(folder.PathOf(name), AccessFor(look));
    return file.IsOpen() ? StatusOf(file.get(), look) : std::nullopt;
}

}  // namespace tessarine
