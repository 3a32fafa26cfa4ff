#pragma once

#include <cstdint>

#include "platform/String.h"

namespace tessarine
{

/// A number of 0 or more as binary digits, the most significant first: 0 gives "0", 5 gives "101".
String DecimalToBinary(std::int32_t number);

/// The reverse: the sum of the digits times the powers of 2 of their positions; "" gives 0. Raises `TypeMismatch` for
/// anything but digits and `Overflow` beyond 32 bits. The counterpart of DecimalToBinary, without a caller.
std::int32_t BinaryToDecimal(StringView text);

}  // namespace tessarine
