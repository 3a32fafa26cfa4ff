#pragma once

#include <string_view>
#include <vector>

#include "platform/String.h"

namespace tessarine::batch
{

/// What ends a path in a list.
enum class PathEnd {
    Line,  ///< LF or CR LF. A UTF-8 byte order mark at the start is left out.
    Null   ///< NUL; all other bytes belong to the path, as file systems allow them.
};

/// The paths of a list file; empty ones are left out. Blanks belong to the path, and the last one needs no end.
std::vector<String> PathsOfList(std::string_view bytes, PathEnd end = PathEnd::Line);

/// The list at `path`, "-" for standard input. Raises `FileNotFound`, `PermissionDenied` or `DeviceIO`; refuses
/// (Refusal.h) a pipe, a folder and whatever else is no regular file, without waiting for it.
std::vector<String> ReadPathList(StringView path, PathEnd end = PathEnd::Line);

}  // namespace tessarine::batch
