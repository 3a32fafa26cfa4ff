#include "report/RunTimes.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "platform/LocalTime.h"

namespace tessarine
{

namespace
{

/// The minutes or seconds of a clock.
std::string TwoDigits(std::int64_t number)
{
    return (number < 10 ? "0" : "") + std::to_string(number);
}

}  // namespace

String DateTimeText(std::time_t moment)
{
    const auto local = moment == 0 ? std::nullopt : LocalTime(moment);
    if (!local)
        return {};
    std::array<char, 64> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &*local);
    return FromUtf8(std::string_view(text.data(), length));
}

String DurationText(std::int64_t seconds)
{
    // A clock that was put back during the run.
    const std::int64_t all = std::max<std::int64_t>(seconds, 0);
    const std::int64_t minutes = all / 60;
    const std::string start =
        minutes < 60 ? std::to_string(minutes) : std::to_string(minutes / 60) + ":" + TwoDigits(minutes % 60);
    return FromUtf8(start + ":" + TwoDigits(all % 60));
}

}  // namespace tessarine
