#pragma once

#include <string>

/// Completions of tessarine-batch for shells, each a script as its shell loads it: commands, the options that the
/// command takes, the words that an option's argument can be, and files for everything else.
namespace tessarine::batch
{

std::string BashCompletion();
std::string ZshCompletion();
std::string FishCompletion();

}  // namespace tessarine::batch
