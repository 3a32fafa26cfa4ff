#pragma once

#include <string>
#include <string_view>

#include "batch/BatchCall.h"
#include "batch/OptionTable.h"

namespace tessarine::batch
{

std::string GeneralHelp();                  ///< "tessarine-batch --help"
std::string HelpFor(Command command);       ///< "tessarine-batch COMMAND --help"
std::string ShortHelp();                    ///< "tessarine-batch -h": the commands
std::string ShortHelpFor(Command command);  ///< "tessarine-batch COMMAND -h": a line for each option
std::string VersionText();                  ///< "tessarine-batch --version": version, and the commit where it is known

/// What no command searches, and what the exit status tells: whole lines.
std::string_view LimitsText();
std::string_view ExitStatusText();

/// "-r, --recurse" or "    --find TEXT": the forms under each other whether or not there is a short one.
std::string FormsOf(const OptionRow& row);

}  // namespace tessarine::batch
