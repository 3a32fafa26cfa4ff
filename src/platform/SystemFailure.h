#pragma once

#include <string>

#include "platform/Failure.h"

namespace tessarine
{

/// The failure for an error number of the operating system (errno), with a text that tells what was attempted on which
/// file: -2147024894 no such file, -2147024893 no such folder, -2147024891 no permission, -2147024864 locked,
/// -2147024784 disk full, -2147024882 out of memory, -2147024867 for anything else.
Failure SystemFailure(int error, const std::string& attempt, const std::string& path);

}  // namespace tessarine
