#pragma once

#include <cstdint>
#include <optional>

#include "model/PowerPoint.h"
#include "platform/Failure.h"

/// What becomes of a number that is put into a custom document property, for all formats alike.
namespace tessarine::builtin
{

/// What an integer kind of property can hold.
struct IntegerRange {
    std::int64_t least;
    std::int64_t largest;
};

/// The number in a value that is one.
std::optional<double> NumberOf(const powerpoint::Value& value);

/// `Overflow`, with the property's name.
Failure TooLargeFor(StringView property);

/// The value as one that an integer property can hold to the last digit; nothing for a fraction and for one that
/// doesn't fit. The value is a number. Raises `Overflow` where a large integer has lost digits on its way.
std::optional<std::int64_t> WholeNumberFor(StringView property, const IntegerRange& range,
                                           const powerpoint::Value& value);

/// A number as a sum of money, which has four decimals. Raises `Overflow` for one whose last digits would be invented.
double AsMoney(StringView property, double number);

/// The text that a value becomes in a text property: a number as a person would write it, without the digits after the
/// fifteenth, which only tell that 0.1 is no binary fraction.
String TextToPut(const powerpoint::Value& value);

}  // namespace tessarine::builtin
