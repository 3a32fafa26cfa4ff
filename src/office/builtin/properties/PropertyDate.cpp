#include "office/builtin/properties/PropertyDate.h"

#include <charconv>
#include <chrono>
#include <ctime>
#include <string>

#include "platform/LocalTime.h"

namespace tessarine::builtin
{

namespace
{

/// Reads digits from the front of the text.
bool TakeNumber(std::string_view& text, std::size_t digits, int& value)
{
    if (text.size() < digits)
        return false;
    const char* end = text.data() + digits;
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    // A sign is no digit, though the library takes it.
    if (error != std::errc() || stop != end || text[0] == '-')
        return false;
    text.remove_prefix(digits);
    return true;
}

bool Take(std::string_view& text, char c)
{
    if (!text.starts_with(c))
        return false;
    text.remove_prefix(1);
    return true;
}

/// A moment of UTC. What is too much for its place (the 31st of April, 60 seconds) goes on into the next one.
std::time_t SecondsSince1970(int year, int month, int day, int hour, int minute, int second)
{
    using namespace std::chrono;
    const sys_days firstOfMonth =
        std::chrono::year(year) / std::chrono::month(static_cast<unsigned>(month)) / std::chrono::day(1);
    const sys_seconds moment = firstOfMonth + days(day - 1) + hours(hour) + minutes(minute) + seconds(second);
    return moment.time_since_epoch().count();
}

}  // namespace

std::optional<powerpoint::Date> ReadPropertyDate(StringView value)
{
    const std::string utf8 = ToUtf8(value);
    std::string_view text = utf8;
    int year = 0;
    int month = 0;
    int day = 0;
    if (!TakeNumber(text, 4, year) || !Take(text, '-') || !TakeNumber(text, 2, month) || !Take(text, '-') ||
        !TakeNumber(text, 2, day))
        return std::nullopt;
    if (month < 1 || month > 12 || day < 1 || day > 31)
        return std::nullopt;

    int hour = 0;
    int minute = 0;
    int second = 0;
    int offset = 0;  // minutes east of UTC
    if (Take(text, 'T') || Take(text, ' ')) {
        if (!TakeNumber(text, 2, hour) || !Take(text, ':') || !TakeNumber(text, 2, minute))
            return std::nullopt;
        if (Take(text, ':') && !TakeNumber(text, 2, second))
            return std::nullopt;
        if (Take(text, '.'))
            text.remove_prefix(std::min(text.find_first_not_of("0123456789"), text.size()));
        const bool west = text.starts_with('-');
        if (Take(text, '+') || Take(text, '-')) {
            int hours = 0;
            int minutes = 0;
            if (!TakeNumber(text, 2, hours) || !Take(text, ':') || !TakeNumber(text, 2, minutes))
                return std::nullopt;
            offset = (hours * 60 + minutes) * (west ? -1 : 1);
        }
    }
    const auto local = LocalTime(SecondsSince1970(year, month, day, hour, minute - offset, second));
    if (!local)
        return std::nullopt;
    return powerpoint::Date{*local};
}

}  // namespace tessarine::builtin
