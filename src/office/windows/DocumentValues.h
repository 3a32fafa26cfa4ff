#pragma once

#include "model/PowerPoint.h"
#include "office/windows/Variant.h"

namespace tessarine::windows
{

/// A value of a document property. Sums of money and decimals become numbers, unsigned numbers beyond 64 bits and no
/// value at all nothing; an object or an array raises `TypeMismatch`.
powerpoint::Value ValueOf(const Variant& variant);

/// The same the other way. A whole number is handed over in 32 bits where it fits, as all programs take it.
Variant VariantOf(const powerpoint::Value& value);

/// A date as the system counts it, in days, as calendar date and time, to the nearest second.
std::tm CalendarOf(DATE days);

}  // namespace tessarine::windows
