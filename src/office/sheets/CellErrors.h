#pragma once

#include "office/sheets/Sheet.h"

namespace tessarine::sheets
{

/// The name that an error shows in English, "#DIV/0!"; "#UNKNOWN!" for a code without one. Text files hold errors by
/// this name; read again, it is a text.
const char* NameOfError(CellError error);

}  // namespace tessarine::sheets
