#pragma once

#include "platform/String.h"

namespace tessarine
{

/// What ends the lines of a text file that the program writes for other programs of this system.
#ifdef _WIN32
inline constexpr StringView LineEnd = u"\r\n";
#else
inline constexpr StringView LineEnd = u"\n";
#endif

}  // namespace tessarine
