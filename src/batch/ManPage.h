#pragma once

#include <string>

namespace tessarine::batch
{

/// The man page of tessarine-batch for section 1, in the macros of man(7): what the help says, command by command, each
/// option once.
std::string ManPage();

}  // namespace tessarine::batch
