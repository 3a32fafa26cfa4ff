#include "office/builtin/PropertyDate.h"

#include <charconv>
#include <ctime>
#include <string>

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
    const auto [behind, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || behind != end || text[0] == '-')
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

}  // namespace

std::optional<powerpoint::Date> ReadPropertyDate(StringView value)
{
    const std::string utf8 = ToUtf8(value);
    std::string_view text = utf8;
    std::tm utc{};
    if (!TakeNumber(text, 4, utc.tm_year) || !Take(text, '-') || !TakeNumber(text, 2, utc.tm_mon) || !Take(text, '-') ||
        !TakeNumber(text, 2, utc.tm_mday))
        return std::nullopt;
    utc.tm_year -= 1900;
    utc.tm_mon -= 1;
    if (utc.tm_mon < 0 || utc.tm_mon > 11 || utc.tm_mday < 1 || utc.tm_mday > 31)
        return std::nullopt;

    int offset = 0;  // minutes east of UTC
    if (Take(text, 'T') || Take(text, ' ')) {
        if (!TakeNumber(text, 2, utc.tm_hour) || !Take(text, ':') || !TakeNumber(text, 2, utc.tm_min))
            return std::nullopt;
        if (Take(text, ':') && !TakeNumber(text, 2, utc.tm_sec))
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
    const std::time_t time = timegm(&utc) - offset * 60;
    powerpoint::Date date;
    if (localtime_r(&time, &date.local) == nullptr)
        return std::nullopt;
    return date;
}

}  // namespace tessarine::builtin
