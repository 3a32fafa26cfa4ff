#pragma once

#include "office/sheets/Sheet.h"

namespace tessarine::sheets
{

/// The name that an error shows, "#DIV/0!"; "#UNKNOWN!" for a code without one.
const char* NameOfError(CellError error);

}  // namespace tessarine::sheets
