#include "files/OpenForReading.h"
#include "files/WindowsFiles.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

// Most volumes don't keep times of last access, and to hold one back a file would have to be opened for writing.
FileDescriptor OpenForReading(const NativeString& path, AccessTime)
{
    return OpenExisting(path, GENERIC_READ);
}

}  // namespace tessarine
