#include "files/OpenedFile.h"
#include "files/WindowsFiles.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

std::int64_t OpenedFile::Clock()
{
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    return NanosecondsFrom(
        static_cast<std::int64_t>(std::uint64_t{now.dwHighDateTime} << 32 | std::uint64_t{now.dwLowDateTime}));
}

std::int64_t OpenedFile::ClockStep()
{
    // 64 ticks a second, unless a program has asked for more.
    return 15'625'000;
}

}  // namespace tessarine
