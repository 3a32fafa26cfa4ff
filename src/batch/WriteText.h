#pragma once

#include <cstdio>
#include <string_view>

namespace tessarine::batch
{

/// Writes a text (UTF-8) to a stream and flushes it: as bytes to a pipe or a file, and as characters to a terminal,
/// which on Windows would take bytes for those of another code page. False when not all of it could be written.
bool WriteText(std::FILE* stream, std::string_view text);

}  // namespace tessarine::batch
