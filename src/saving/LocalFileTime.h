#pragma once

#include <time.h>

#include <cstdint>

/// Times of files on Windows as FileTimes has them. For files that end in "Windows.cpp".
namespace tessarine
{

/// A time of the system (tenths of microseconds since 1601) as the clock on the wall showed it, to the millisecond.
timespec LocalTimeFrom(std::int64_t ticks);

/// The way back. Both go by the offset that local time has now, whatever it was then.
std::int64_t TicksFromLocalTime(const timespec& local);

/// Moments: a time of the system as time since 1970, and back.
timespec MomentFrom(std::int64_t ticks);
std::int64_t TicksFromMoment(const timespec& moment);

}  // namespace tessarine
