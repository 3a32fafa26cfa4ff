#include "office/builtin/reader/PropertyNumbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace tessarine::builtin
{

namespace
{

/// Up to here each whole number is a double.
constexpr double largestExact = 9007199254740992.0;

/// Without the digits after the fifteenth. Larger numbers need all that they have.
double AsWritten(double number)
{
    constexpr double fifteenDigits = 1e15;
    if (std::abs(number) >= fifteenDigits)
        return number;
    std::array<char, 32> buffer;
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::general, 15);
    double result = 0;
    std::from_chars(buffer.data(), written.ptr, result);
    return result;
}

}  // namespace

std::optional<double> NumberOf(const powerpoint::Value& value)
{
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    if (const auto* number = std::get_if<std::int64_t>(&value))
        return static_cast<double>(*number);
    return std::nullopt;
}

Failure TooLargeFor(StringView property)
{
    return {FailureNumber::Overflow,
            u"The number is too large for the document property \"" + String(property) + u"\""};
}

std::optional<std::int64_t> WholeNumberFor(StringView property, const IntegerRange& range,
                                           const powerpoint::Value& value)
{
    std::int64_t whole = 0;
    if (const auto* const number = std::get_if<double>(&value)) {
        if (std::trunc(*number) != *number)
            return std::nullopt;
        if (std::abs(*number) > largestExact) {
            if (range.largest == std::numeric_limits<std::int64_t>::max())
                throw TooLargeFor(property);
            return std::nullopt;
        }
        whole = static_cast<std::int64_t>(*number);
    } else {
        whole = std::get<std::int64_t>(value);
    }
    return whole >= range.least && whole <= range.largest ? std::optional(whole) : std::nullopt;
}

double AsMoney(StringView property, double number)
{
    // Beyond that the fourth decimal is not what it was.
    constexpr double decimals = 10000;
    if (std::abs(number) * decimals > largestExact)
        throw TooLargeFor(property);
    return std::round(number * decimals) / decimals;
}

String TextToPut(const powerpoint::Value& value)
{
    const auto* const fraction = std::get_if<double>(&value);
    return powerpoint::TextOf(fraction == nullptr ? value : powerpoint::Value(AsWritten(*fraction)));
}

}  // namespace tessarine::builtin
