#pragma once

#include "office/sheets/Sheet.h"

namespace tessarine::sheets
{

/// The first sheet of a file. A name that ends in ".xls" or ".xlsx" is a workbook, ".csv" comma separated text and any
/// other tab separated text, whatever the case; a compound file and a zip file are workbooks under any name. Raises
/// `ApplicationDefined`, whatever the reason, with a text that names the file and the reason.
Sheet OpenSheet(const String& path, const Limits& limits = Limits::Default());

/// Writes a sheet as the name asks for: ".xls" a binary workbook, ".xlsx" one of Office Open XML, ".csv" comma
/// separated text. An existing file is replaced; whatever fails, the old file or the complete new one is there. Raises
/// `ApplicationDefined` as above, for another name too.
void SaveSheet(const String& path, const Sheet& sheet);

}  // namespace tessarine::sheets
