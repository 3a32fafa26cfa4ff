#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "platform/Failure.h"

namespace tessarine
{

/// `value` as the narrower `Integer`. Raises `Overflow` when it does not fit.
template <class Integer>
Integer Checked(std::int64_t value)
{
    if (value < std::numeric_limits<Integer>::min() || value > std::numeric_limits<Integer>::max())
        throw Failure(FailureNumber::Overflow, u"Overflow");
    return static_cast<Integer>(value);
}

/// A number as an integer, a half to the even neighbour. Raises `Overflow` when it does not fit, and for what is not a
/// number.
inline std::int32_t RoundedToInt32(double number)
{
    // By the rounding in force, which is to the nearest and even one unless somebody changes it.
    const double rounded = std::nearbyint(number);
    // Said this way round, so that what is not a number is refused too.
    if (!(std::abs(rounded) < 9e15))
        throw Failure(FailureNumber::Overflow, u"Overflow");
    return Checked<std::int32_t>(static_cast<std::int64_t>(rounded));
}

/// The sum in the type of `left`. Raises `Overflow` when it does not fit.
template <class Integer>
Integer CheckedSum(Integer left, std::int64_t right)
{
    return Checked<Integer>(static_cast<std::int64_t>(left) + right);
}

}  // namespace tessarine
