#include <fcntl.h>

#include <cerrno>
#include <utility>

#include "files/HeldFolder.h"
#include "files/OpenFolderPosix.h"

namespace tessarine
{

namespace
{

std::string WithSeparator(std::string path)
{
    if (!path.empty() && !path.ends_with('/'))
        path += '/';
    return path;
}

}  // namespace

FileDescriptor OpenFolder(int from, const std::string& path)
{
    const char* const name = path.empty() ? "." : path.c_str();
    FileDescriptor folder(openat(from, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Files can be made in a folder that can't be listed.
    if (!folder.IsOpen() && errno == EACCES)
        folder = FileDescriptor(openat(from, name, O_PATH | O_DIRECTORY | O_CLOEXEC));
    return folder;
}

HeldFolder::HeldFolder(const NativeString& path) : HeldFolder(OpenFolder(AT_FDCWD, path), path) {}

HeldFolder::HeldFolder(FileDescriptor folder, NativeString path)
    : folder_(std::move(folder)), path_(WithSeparator(std::move(path)))
{
}

}  // namespace tessarine
