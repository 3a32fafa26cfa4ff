#pragma once

#include <string>

#include "platform/Failure.h"

namespace tessarine
{

/// The Failure for a file operation of the run that the system refused with `error` (an errno value): the classic file
/// numbers 53, 57, 61, 70 or 76, and a text of the form "Permission denied: could not open /folder/a.pptx". `action` is
/// what was attempted ("open").
Failure FileFailure(int error, const char* action, const std::string& path);

}  // namespace tessarine
