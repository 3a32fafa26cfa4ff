#pragma once

#include <cstdint>
#include <string_view>

#include "platform/String.h"

namespace tessarine
{

/// Adds bytes at the end of a file in one piece, so that lines of two processes don't mix, and makes the file when it
/// is missing. The file is closed again. A file that holds `limit` bytes or more is first renamed to its name and
/// ".old", in place of an older one, and a new one begun: the two never hold much more than twice the limit.
///
/// Never waits. Raises as ClassicFileFailure tells, such as `DiskFull` or `PathNotFound`; `PermissionDenied` also for a
/// path that is a link, a pipe, a device or anything else that isn't a file.
void AppendToFile(StringView path, std::string_view bytes, std::uint64_t limit);

}  // namespace tessarine
