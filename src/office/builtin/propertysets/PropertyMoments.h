#pragma once

#include <cstdint>
#include <optional>

#include "model/PowerPoint.h"

/// The two ways in which property sets tell a moment ([MS-OLEPS] 2.15).
namespace tessarine::builtin
{

/// A FILETIME, tenths of microseconds since 1601 in UTC, in local time; a part of a second is ignored. Nothing for a
/// date that the system can't convert.
std::optional<powerpoint::Date> DateOfFileTime(std::uint64_t fileTime);

/// Days since 30 December 1899 in local time, to the nearest second: 1.5 is noon of the 31st. Below zero the fraction
/// still goes forwards: -1.5 is noon of the 29th. Nothing outside of the years 100 to 9999.
std::optional<powerpoint::Date> DateOfDays(double days);

}  // namespace tessarine::builtin
