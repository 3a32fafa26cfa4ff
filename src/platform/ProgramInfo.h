#pragma once

#include "platform/String.h"

namespace tessarine
{

/// What the program calls itself: the two levels of the per-user data folder, and the end of window titles.
inline constexpr StringView CompanyName = u"Tessarine";
inline constexpr StringView ApplicationTitle = u"Tessarine";

/// The address of the product's site, where "Visit Our Website" leads. Empty as long as there is none.
inline constexpr StringView HomePage = u"";

inline constexpr StringView ExecutableName = u"tessarine";  ///< Base name of the desktop program.

}  // namespace tessarine
