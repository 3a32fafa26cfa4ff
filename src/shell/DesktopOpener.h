#pragma once

#include <cstdint>

#include "platform/String.h"

namespace tessarine
{

/// Opens a file, folder or address with the desktop's own opener ("xdg-open") and gives a code of ShellResult. An
/// opener that runs for longer than a second counts as successful and goes on.
std::int32_t OpenWithDesktop(const String& target);

}  // namespace tessarine
