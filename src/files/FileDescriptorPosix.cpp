#include <unistd.h>

#include "files/FileDescriptor.h"

namespace tessarine
{

FileDescriptor::FileDescriptor(NativeFile file) : file_(file < 0 ? NoFile : file) {}

bool FileDescriptor::Close()
{
    return !IsOpen() || close(Release()) == 0;
}

}  // namespace tessarine
