#pragma once

#include <ctime>
#include <optional>

namespace tessarine
{

/// A moment as a calendar and a clock in the user's time zone show it. Nothing for a moment beyond the years that the
/// system can count.
std::optional<std::tm> LocalTime(std::time_t moment);

}  // namespace tessarine
