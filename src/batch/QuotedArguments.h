#pragma once

#include <string>
#include <vector>

#include "platform/NativePath.h"

namespace tessarine::batch
{

/// A command line of Windows, from which a program reads these arguments after its name, each as it is here: whatever
/// blanks, quotes and backslashes it has.
NativeString QuotedArguments(const std::vector<std::string>& arguments);

}  // namespace tessarine::batch
