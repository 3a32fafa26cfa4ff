#pragma once

#include "platform/String.h"

namespace tessarine
{

/// What stands between the parts of a path that the program makes, and all that may stand there in a path that it is
/// given.
#ifdef _WIN32
inline constexpr char16_t PathSeparator = u'\\';
inline constexpr StringView PathSeparators = u"\\/";
#else
inline constexpr char16_t PathSeparator = u'/';
inline constexpr StringView PathSeparators = u"/";
#endif

}  // namespace tessarine
