#pragma once

#include <string>
#include <variant>
#include <vector>

#include "batch/BatchCall.h"

namespace tessarine::batch
{

/// The program's answer when there is nothing to run: help, the version, or what is wrong with the call.
struct EarlyEnd {
    int exitStatus = 0;
    std::string output;  ///< For standard output.
    std::string error;   ///< For standard error: one line.
};

/// Reads the command line (without the program's name, UTF-8 or the bytes of file names). A call that is not valid ends
/// with exit status 2 and one line that says why; no file has been looked at then.
std::variant<BatchCall, EarlyEnd> ReadCommandLine(const std::vector<std::string>& arguments);

}  // namespace tessarine::batch
