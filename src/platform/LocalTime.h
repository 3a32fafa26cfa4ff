#pragma once

#include <ctime>
#include <optional>

namespace tessarine
{

/// A moment as a calendar and a clock in the user's time zone show it; nothing for one that the system can't show.
std::optional<std::tm> LocalTime(std::time_t moment);

}  // namespace tessarine
