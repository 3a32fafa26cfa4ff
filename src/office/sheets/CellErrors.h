#pragma once

#include <optional>
#include <string_view>

#include "office/sheets/Sheet.h"

namespace tessarine::sheets
{

/// The name that an error shows in English, "#DIV/0!"; "#UNKNOWN!" for a code without one. Text files hold errors by
/// this name; read again, it is a text.
const char* NameOfError(CellError error);

/// The error of such a name; nothing for any other text.
std::optional<CellError> ErrorNamed(std::string_view name);

}  // namespace tessarine::sheets
