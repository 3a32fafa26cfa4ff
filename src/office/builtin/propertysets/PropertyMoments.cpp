#include "office/builtin/propertysets/PropertyMoments.h"

#include <chrono>
#include <cmath>
#include <ctime>

#include "platform/LocalTime.h"

namespace tessarine::builtin
{

std::optional<powerpoint::Date> DateOfFileTime(std::uint64_t fileTime)
{
    constexpr std::uint64_t inASecond = 10'000'000;
    constexpr std::int64_t from1601To1970 = 11'644'473'600;
    const auto seconds = static_cast<std::int64_t>(fileTime / inASecond) - from1601To1970;
    const auto local = LocalTime(static_cast<std::time_t>(seconds));
    if (!local)
        return std::nullopt;
    return powerpoint::Date{*local};
}

std::optional<powerpoint::Date> DateOfDays(double days)
{
    using namespace std::chrono;
    constexpr double firstDay = -657434;  // of the year 100
    constexpr double endDay = 2958466;    // of the year 9999
    if (!(days >= firstDay && days < endDay))
        return std::nullopt;

    const double day = std::trunc(days);
    const sys_seconds moment = sys_days(year(1899) / December / 30) + std::chrono::days(static_cast<int>(day)) +
                               seconds(std::lround(std::abs(days - day) * 86400));
    const sys_days date = floor<std::chrono::days>(moment);
    const year_month_day calendar(date);
    const hh_mm_ss clock(moment - date);
    std::tm local{};
    local.tm_year = static_cast<int>(calendar.year()) - 1900;
    local.tm_mon = static_cast<int>(static_cast<unsigned>(calendar.month())) - 1;
    local.tm_mday = static_cast<int>(static_cast<unsigned>(calendar.day()));
    local.tm_hour = static_cast<int>(clock.hours().count());
    local.tm_min = static_cast<int>(clock.minutes().count());
    local.tm_sec = static_cast<int>(clock.seconds().count());
    local.tm_wday = static_cast<int>(weekday(date).c_encoding());
    local.tm_yday = static_cast<int>((date - sys_days(calendar.year() / January / 1)).count());
    local.tm_isdst = -1;  // nobody knows
    return powerpoint::Date{local};
}

}  // namespace tessarine::builtin
