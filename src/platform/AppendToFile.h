#pragma once

#include <string_view>

#include "platform/String.h"

namespace tessarine
{

/// Adds bytes at the end of a file in one piece, so that lines of two processes don't mix, and makes the file when it
/// is missing. The file is closed again. Raises as ClassicFileFailure tells, such as `DiskFull`, `PermissionDenied` or
/// `PathNotFound`.
void AppendToFile(StringView path, std::string_view bytes);

}  // namespace tessarine
