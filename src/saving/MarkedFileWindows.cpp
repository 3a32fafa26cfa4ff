#include "saving/MarkedFile.h"

#include "files/FileOwner.h"
#include "files/FileState.h"
#include "files/HeldFolder.h"
#include "files/WindowsErrors.h"
#include "files/WindowsFiles.h"
#include "platform/FolderOf.h"
#include "platform/WindowsHeaders.h"
#include "saving/LocalFileTime.h"

namespace tessarine
{

namespace
{

FileMark MarkFrom(const FileState& state)
{
    return {state.identity.file, state.size, MomentFrom(TicksFrom(state.lastWrite))};
}

bool Put(NativeFile file, FILE_BASIC_INFO& basic)
{
    return SetFileInformationByHandle(file, FileBasicInfo, &basic, sizeof basic) || LeaveErrorInErrno();
}

}  // namespace

std::optional<FileMark> MarkOf(NativeFile file)
{
    const auto state = FileStateOf(file);
    return state ? std::optional(MarkFrom(*state)) : std::nullopt;
}

bool LookAt(const NativeString& path, std::uint64_t& device, FileMark& mark)
{
    const auto status = StatusAt(path);
    if (!status)
        return false;
    device = status->state.identity.device;
    mark = MarkFrom(status->state);
    return true;
}

FileEntry::Dates DatesOf(const FileTimes& times)
{
    return {MomentFrom(TicksFromLocalTime(times.lastAccess)), MomentFrom(TicksFromLocalTime(times.lastWrite))};
}

bool IsOwnFile(NativeFile file)
{
    const auto status = StatusOf(file, Look::WithOwner);
    return status && status->kind == FileKind::File && IsThisUser(status->owner);
}

FileDescriptor OpenToPutBack(const NativeString& path)
{
    return OpenForAttributeChange(path);
}

FileDescriptor OpenToComplete(const NativeString& path)
{
    return OpenNoLink(path, GENERIC_READ | GENERIC_WRITE);
}

FileDescriptor OpenCopy(const NativeString& path)
{
    return OpenNoLink(path, GENERIC_READ);
}

bool PutDates(NativeFile file, const timespec& lastAccess, const timespec& lastWrite)
{
    FILE_BASIC_INFO basic{};  // what is 0 stays as it is
    basic.LastAccessTime.QuadPart = TicksFromMoment(lastAccess);
    basic.LastWriteTime.QuadPart = TicksFromMoment(lastWrite);
    return Put(file, basic);
}

bool PutMode(NativeFile file, std::uint32_t mode)
{
    FILE_BASIC_INFO basic{};
    basic.FileAttributes = SettableAttributes(mode);
    return Put(file, basic);
}

bool IsModeOfRun(std::uint32_t mode, std::uint32_t)
{
    // None, but for the one that the system gives to a file that was written.
    return mode == FILE_ATTRIBUTE_NORMAL || mode == FILE_ATTRIBUTE_ARCHIVE;
}

void RemoveFile(const NativeString& path) noexcept
{
    DeleteFileW(path.c_str());
}

bool RenameFile(const NativeString& from, const NativeString& to)
{
    return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) || LeaveErrorInErrno();
}

void FlushFolderOf(const NativeString& path)
{
    const HeldFolder folder{NativeString(FolderOf(path))};
    if (folder.IsOpen())
        FlushFileBuffers(folder.get());
}

}  // namespace tessarine
