#include "platform/LocalTime.h"

#include <cstdint>

#include "platform/SystemTimeFields.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

constexpr std::int64_t ticksPerSecond = 10'000'000;        // the system counts tenths of microseconds
constexpr std::int64_t secondsTo1970 = 11'644'473'600;     // since the beginning of 1601
constexpr std::int64_t secondsToTheEnd = 910'692'730'085;  // the last second that its counter holds

int DayOfYear(const SYSTEMTIME& date)
{
    constexpr int daysBefore[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
    const bool isLeapYear = date.wYear % 4 == 0 && (date.wYear % 100 != 0 || date.wYear % 400 == 0);
    return daysBefore[date.wMonth - 1] + date.wDay - 1 + (isLeapYear && date.wMonth > 2 ? 1 : 0);
}

}  // namespace

// Not by localtime_s, which knows no moment before 1970; dates of presentations begin with 1601.
std::optional<std::tm> LocalTime(std::time_t moment)
{
    if (moment < -secondsTo1970 || moment > secondsToTheEnd - secondsTo1970)
        return std::nullopt;
    const auto ticks = static_cast<std::uint64_t>((moment + secondsTo1970) * ticksPerSecond);
    const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    SYSTEMTIME universal{};
    SYSTEMTIME local{};
    if (!FileTimeToSystemTime(&time, &universal) || !SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local))
        return std::nullopt;

    std::tm result = CalendarOf(local);
    result.tm_wday = local.wDayOfWeek;
    result.tm_yday = DayOfYear(local);
    return result;
}

}  // namespace tessarine
