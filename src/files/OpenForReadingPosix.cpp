#include <fcntl.h>

#include <cerrno>

#include "files/OpenForReading.h"

namespace tessarine
{

FileDescriptor OpenForReading(const NativeString& path, AccessTime accessTime)
{
    constexpr int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    if (accessTime == AccessTime::Moves)
        return FileDescriptor(open(path.c_str(), flags));
    FileDescriptor file(open(path.c_str(), flags | O_NOATIME));
    // Refused for files of other owners.
    if (!file.IsOpen() && errno == EPERM)
        file = FileDescriptor(open(path.c_str(), flags));
    return file;
}

}  // namespace tessarine
