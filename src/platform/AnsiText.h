#pragma once

#include <optional>
#include <string>

#include "platform/String.h"

namespace tessarine
{

/// A text in the system's code page, as those calls of Windows take it whose names end in "A"; for files that end in
/// "Windows.cpp". Nothing for a text with a letter that the code page lacks: the system would put a similar one or "?"
/// in its place, and so name another file. FromCodePage is the way back.
std::optional<std::string> ToAnsi(StringView text);

}  // namespace tessarine
