#pragma once

#include <cstdint>
#include <ctime>

#include "platform/String.h"

namespace tessarine
{

/// "2026-03-01 17:05", in the user's time zone and alike in every language. Empty for no moment (0).
String DateTimeText(std::time_t moment);

/// "0:07", "12:30" or "1:02:03"
String DurationText(std::int64_t seconds);

}  // namespace tessarine
