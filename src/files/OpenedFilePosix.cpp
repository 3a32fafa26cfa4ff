#include <time.h>

#include "files/Nanoseconds.h"
#include "files/OpenedFile.h"

namespace tessarine
{

// The clock that kernels stamp files by moves in ticks of some milliseconds.

std::int64_t OpenedFile::Clock()
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return Nanoseconds(now);
}

std::int64_t OpenedFile::ClockStep()
{
    timespec resolution = {0, 10'000'000};
    clock_getres(CLOCK_REALTIME_COARSE, &resolution);
    return Nanoseconds(resolution);
}

}  // namespace tessarine
