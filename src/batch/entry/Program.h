#pragma once

#include <string>
#include <vector>

namespace tessarine::batch
{

/// The whole program, called with its arguments (UTF-8, without its own name) by the entry of the system at hand. Gives
/// the exit status.
int RunProgram(const std::vector<std::string>& arguments);

}  // namespace tessarine::batch
