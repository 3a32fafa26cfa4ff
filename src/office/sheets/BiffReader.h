#pragma once

#include <string_view>

#include "office/sheets/Sheet.h"

namespace tessarine::sheets
{

/// The first worksheet of a binary workbook's stream, in the order of the sheets and hidden ones included, chart and
/// macro sheets passed over: of Excel 97 to 2003 (BIFF8) or Excel 5 and 95 (BIFF5).
///
/// Cells have the values that the workbook holds, formulas their last results. A number in a cell that is formatted as
/// a date is the text of that date, as the system displays it. Cells with formatting alone count as empty, so that a
/// list does not grow by a border that somebody drew around it.
///
/// Raises `ApplicationDefined`: for an encrypted workbook, one without a worksheet, an older one, a damaged one, and
/// beyond the limits.
Sheet ReadBiff(std::string_view stream, const Limits& limits = Limits::Default());

}  // namespace tessarine::sheets
