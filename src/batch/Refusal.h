#pragma once

#include <string>

#include "platform/String.h"

namespace tessarine::batch
{

/// Raises `InvalidProcedureCall` with a text for one line: what the call asks for is not possible, and why. No file
/// has been touched then.
[[noreturn]] void Refuse(const String& text);
[[noreturn]] void Refuse(const std::string& text);

}  // namespace tessarine::batch
