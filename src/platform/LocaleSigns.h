#pragma once

#include <string>

/// The signs in numbers, for Locale.cpp alone. UTF-8.
namespace tessarine
{

/// Between the whole part and the fraction.
std::string DecimalSign();

/// Between groups of digits; empty in a locale that doesn't group them.
std::string GroupingSign();

}  // namespace tessarine
