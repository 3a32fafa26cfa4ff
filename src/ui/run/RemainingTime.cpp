#include "ui/run/RemainingTime.h"

namespace tessarine
{

namespace
{

constexpr std::int32_t tellingFiles = 3;
constexpr int tellingSeconds = 5;

int RoundedUp(std::int64_t seconds)
{
    constexpr std::int64_t minute = 60;
    const std::int64_t step = seconds < minute ? 5 : seconds < 10 * minute ? 30 : minute;
    return static_cast<int>((seconds + step - 1) / step * step);
}

}  // namespace

std::optional<int> SecondsLeft(std::int32_t filesDone, std::int32_t allFiles, int secondsGone)
{
    if (filesDone < tellingFiles || secondsGone < tellingSeconds || filesDone >= allFiles)
        return std::nullopt;
    return RoundedUp(std::int64_t{secondsGone} * (allFiles - filesDone) / filesDone);
}

}  // namespace tessarine
