#pragma once

#include "platform/String.h"

namespace tessarine
{

/// The place that the engine's failure texts name.
inline constexpr StringView SearchPlace = u"Class Module SearchFunctions";

}  // namespace tessarine
