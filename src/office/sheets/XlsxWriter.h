#pragma once

#include <string>

#include "office/sheets/Sheet.h"

namespace tessarine::sheets
{

/// A sheet as the file of an Office Open XML workbook (.xlsx, ECMA-376 Transitional) with one worksheet, "Sheet1", and
/// nothing that Excel does not need. Texts stay texts, also those that begin with "=": their cells have the format
/// Text, so that they still do after somebody has edited them. Infinity and NaN become the error #NUM!. The first row,
/// a list's headers, is bold. The same sheet gives the same bytes.
///
/// Raises `ApplicationDefined` for a text of more than 32767 UTF-16 units, as Excel would cut it.
std::string WriteXlsx(const Sheet& sheet);

}  // namespace tessarine::sheets
