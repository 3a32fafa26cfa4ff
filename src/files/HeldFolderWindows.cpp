#include <utility>

#include "files/HeldFolder.h"
#include "files/WindowsErrors.h"
#include "files/WindowsFiles.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

/// Without the right to delete it, which is what keeps the folder where it is.
constexpr unsigned long sharedForWork = FILE_SHARE_READ | FILE_SHARE_WRITE;

NativeString WithSeparator(NativeString path)
{
    if (!path.empty() && !path.ends_with(L'\\'))
        path += L'\\';
    return path;
}

FileDescriptor Open(const NativeString& path)
{
    const NativeString named = path.empty() ? L"." : path;
    // The second right is the one that flushing asks for: to make files in the folder.
    FileDescriptor folder =
        OpenExisting(named, FILE_READ_ATTRIBUTES | FILE_LIST_DIRECTORY | FILE_ADD_FILE, sharedForWork);
    if (!folder.IsOpen())
        folder = OpenExisting(named, FILE_READ_ATTRIBUTES | FILE_TRAVERSE, sharedForWork);
    if (!folder.IsOpen())
        return folder;
    FILE_BASIC_INFO basic{};
    if (GetFileInformationByHandleEx(folder.get(), FileBasicInfo, &basic, sizeof basic) &&
        (basic.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        SetLastError(ERROR_DIRECTORY);
        LeaveErrorInErrno();
        folder.Close();
    }
    return folder;
}

}  // namespace

HeldFolder::HeldFolder(const NativeString& path) : HeldFolder(Open(path), path) {}

HeldFolder::HeldFolder(FileDescriptor folder, NativeString path)
    : folder_(std::move(folder)), path_(WithSeparator(std::move(path)))
{
}

}  // namespace tessarine
