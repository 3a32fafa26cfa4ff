#pragma once

#include <string>

#include "batch/BatchCall.h"

namespace tessarine::batch
{

std::string_view NameOf(Command command);  ///< As it is typed, in one word or two.

std::string GeneralHelp();             ///< "tessarine-batch --help"
std::string HelpFor(Command command);  ///< "tessarine-batch COMMAND --help"
std::string VersionText();             ///< "tessarine-batch --version": version, and the commit where it is known

}  // namespace tessarine::batch
