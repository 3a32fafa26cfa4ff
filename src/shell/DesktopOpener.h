#pragma once

#include <chrono>
#include <cstdint>

#include "platform/String.h"

namespace tessarine
{

/// Opens a file, folder or address with the desktop's own opener and gives a code of ShellResult.
///
/// On Linux by "xdg-open": Opened, FileNotFound, or NoAssociation for everything else, also where there is no opener.
/// An opener that runs for longer than `patience` counts as successful and goes on; it belongs to nobody and outlives
/// the program.
///
/// On Windows by ShellExecuteA, whose codes come as they are, from the folder "C:\". A target with a letter that the
/// system's code page lacks goes to ShellExecuteW: the other would open a file of another name, or none. `patience` has
/// no use there, as the shell waits for no program.
std::int32_t OpenWithDesktop(const String& target, std::chrono::milliseconds patience = std::chrono::seconds(1));

}  // namespace tessarine
