#pragma once

#include <chrono>
#include <cstdint>

#include "platform/String.h"

namespace tessarine
{

/// Opens a file, folder or address with the desktop's own opener ("xdg-open") and gives a code of ShellResult: Opened,
/// FileNotFound, or NoAssociation for everything else, also where there is no opener. An opener that runs for longer
/// than `patience` counts as successful and goes on; it belongs to nobody and outlives the program.
std::int32_t OpenWithDesktop(const String& target, std::chrono::milliseconds patience = std::chrono::seconds(1));

}  // namespace tessarine
