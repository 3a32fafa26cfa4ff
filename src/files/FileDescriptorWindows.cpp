#include "files/FileDescriptor.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

FileDescriptor::FileDescriptor(NativeFile file) : file_(file == INVALID_HANDLE_VALUE ? NoFile : file) {}

bool FileDescriptor::Close()
{
    return !IsOpen() || CloseHandle(Release());
}

}  // namespace tessarine
