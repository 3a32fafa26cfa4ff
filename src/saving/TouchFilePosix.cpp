#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <ctime>

#include "files/FileFailure.h"
#include "platform/NativePath.h"
#include "saving/DateOfTouch.h"
#include "saving/ReplacementFile.h"

namespace tessarine
{

void TouchFile(StringView path)
{
    const std::string name = NativePath(path);
    if (faccessat(AT_FDCWD, name.c_str(), W_OK, AT_EACCESS) != 0)
        throw SystemFileFailure(errno, "save", name);
    const std::array<timespec, 2> times{{{0, UTIME_OMIT}, {0, UTIME_NOW}}};
    if (utimensat(AT_FDCWD, name.c_str(), times.data(), 0) == 0)
        return;
    // Others than the owner may set both times to now, and nothing else.
    if (errno != EPERM || utimensat(AT_FDCWD, name.c_str(), nullptr, 0) != 0)
        throw SystemFileFailure(errno, "save", name);
}

timespec DateOfTouch()
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return now;
}

bool PutDateOfTouch(NativeFile file, const timespec& date)
{
    const std::array<timespec, 2> times{{{0, UTIME_OMIT}, date}};
    // Others than the owner may set both times to now, and nothing else.
    return futimens(file, times.data()) == 0 || (errno == EPERM && futimens(file, nullptr) == 0);
}

}  // namespace tessarine
