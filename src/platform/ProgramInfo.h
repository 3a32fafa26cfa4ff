#pragma once

#include "platform/String.h"

namespace tessarine
{

/// What the program calls itself: the two levels of the per-user data folder, and the end of window titles.
inline constexpr StringView CompanyName = u"Tessarine";
inline constexpr StringView ApplicationTitle = u"Tessarine";

/// Where "Visit Our Website" leads. A name that is reserved for examples: the project has no site of its own yet.
inline constexpr StringView HomePage = u"https://tessarine.example/";

inline constexpr StringView ExecutableName = u"tessarine";  ///< Base name of the desktop program.

}  // namespace tessarine
