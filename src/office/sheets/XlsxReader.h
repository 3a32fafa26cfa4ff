#pragma once

#include <string_view>

#include "office/sheets/Sheet.h"

namespace tessarine::sheets
{

/// The first worksheet of an Office Open XML workbook (.xlsx, .xlsm, .xltx, .xltm; ECMA-376, Transitional or Strict),
/// in the order of the workbook and hidden ones included; chart, dialog and macro sheets are passed over.
///
/// Cells have the values that the file holds. A formula has its last result, and one without a result that is a text
/// alone (="007") is that text. The runs of a text are one text, without the phonetic ones. A number in a cell that is
/// formatted as a date is the text of that date, as the system displays it. Cells with formatting alone count as empty.
///
/// Raises `ApplicationDefined`: for a file that is damaged or something else, a part or cells beyond the limits, a
/// workbook without a worksheet, a formula that nobody has calculated, and rows or cells that are not in order.
Sheet ReadXlsx(std::string_view file, const Limits& limits = Limits::Default());

}  // namespace tessarine::sheets
