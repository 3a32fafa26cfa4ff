#pragma once

#include <string_view>
#include <vector>

#include "platform/String.h"

namespace tessarine::batch
{

/// The paths of a list file, one a line. Lines end in LF or CR LF; empty ones and a UTF-8 byte order mark are left out.
/// Blanks belong to the path.
std::vector<String> PathsOfList(std::string_view bytes);

/// The list at `path`, "-" for standard input. Raises `FileNotFound`, `PermissionDenied` or `DeviceIO`; refuses
/// (Refusal.h) a pipe, a folder and whatever else is no regular file, without waiting for it.
std::vector<String> ReadPathList(StringView path);

}  // namespace tessarine::batch
