#pragma once

#include <cstdint>
#include <ctime>

namespace tessarine
{

/// A time or a duration as one number. Years far from ours, which a file may be given, don't fit: wrapped around they
/// still tell two times apart.
constexpr std::int64_t Nanoseconds(const timespec& time)
{
    constexpr std::uint64_t perSecond = 1'000'000'000;
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(time.tv_sec) * perSecond +
                                     static_cast<std::uint64_t>(time.tv_nsec));
}

}  // namespace tessarine
