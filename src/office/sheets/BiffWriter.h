#pragma once

#include <string>

#include "office/sheets/Sheet.h"

namespace tessarine::sheets
{

/// A sheet as the stream of an Excel 97-2003 workbook (BIFF8) with one worksheet, "Sheet1". Texts stay texts, also
/// those that begin with "=", and booleans stay booleans; infinity and NaN become the error #NUM!. The first row, a
/// list's headers, is bold.
///
/// Raises `ApplicationDefined` for more than 65536 rows or 256 columns, and for a text of more than 32767 UTF-16 units.
std::string WriteBiff(const Sheet& sheet);

/// The longest text that a cell takes, in UTF-16 units.
inline constexpr std::size_t maxCellText = 32767;

}  // namespace tessarine::sheets
