#pragma once

#include <string>

#include "platform/String.h"

namespace tessarine
{

/// A path as the system takes it. Raises 53 for a path with a NUL, which the system would cut and take for another
/// file.
std::string NativePath(StringView path);

}  // namespace tessarine
