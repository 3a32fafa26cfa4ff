#pragma once

namespace tessarine
{

/// What stands between the parts of a path.
#ifdef _WIN32
inline constexpr char16_t PathSeparator = u'\\';
#else
inline constexpr char16_t PathSeparator = u'/';
#endif

}  // namespace tessarine
