#pragma once

#include <string>

#include "batch/BatchCall.h"

namespace tessarine::batch
{

std::string_view NameOf(Command command);

std::string GeneralHelp();             ///< "tessarine-batch --help"
std::string HelpFor(Command command);  ///< "tessarine-batch COMMAND --help"
std::string VersionText();             ///< "tessarine-batch --version"

}  // namespace tessarine::batch
