#pragma once

#include <ctime>

#include "platform/WindowsHeaders.h"

#ifdef _WIN32
namespace tessarine
{

/// Date and time of day in the form of Windows, and back. What the other form has no place for is 0, and whether summer
/// time holds is not known (-1).
SYSTEMTIME SystemTimeOf(const std::tm& calendar);
std::tm CalendarOf(const SYSTEMTIME& time);

}  // namespace tessarine
#endif
