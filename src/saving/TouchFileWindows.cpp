#include <cerrno>

#include "files/FileFailure.h"
#include "files/WindowsErrors.h"
#include "files/WindowsFiles.h"
#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"
#include "saving/DateOfTouch.h"
#include "saving/LocalFileTime.h"
#include "saving/ReplacementFile.h"

namespace tessarine
{

void TouchFile(StringView path)
{
    const NativeString native = NativePath(path);
    // For writing, so that a protected file fails.
    const FileDescriptor file = OpenExisting(native, GENERIC_WRITE);
    if (!file.IsOpen() || !PutDateOfTouch(file.get(), DateOfTouch()))
        throw SystemFileFailure(errno, "save", native);
}

timespec DateOfTouch()
{
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    return MomentFrom(
        static_cast<std::int64_t>(std::uint64_t{now.dwHighDateTime} << 32 | std::uint64_t{now.dwLowDateTime}));
}

bool PutDateOfTouch(NativeFile file, const timespec& date)
{
    FILE_BASIC_INFO basic{};  // what is 0 stays as it is
    basic.LastWriteTime.QuadPart = TicksFromMoment(date);
    return SetFileInformationByHandle(file, FileBasicInfo, &basic, sizeof basic) || LeaveErrorInErrno();
}

}  // namespace tessarine
