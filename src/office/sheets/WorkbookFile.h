#pragma once

#include <string>
#include <string_view>

#include "office/sheets/Sheet.h"

namespace tessarine::sheets
{

/// The first worksheet of a workbook's file, a binary one (.xls, ReadBiff) or an Office Open XML one (.xlsx, ReadXlsx).
/// What a file is shows by its content alone. Raises `ApplicationDefined` with a text that says what the file is
/// instead: an OpenDocument file, an encrypted workbook, a web page, an XML spreadsheet, text, a workbook of Excel 4 or
/// earlier, some other document, empty, damaged.
Sheet ReadWorkbook(std::string_view file, const Limits& limits = Limits::Default());

/// The file of a binary workbook with this sheet, as WriteBiff tells. Raises `ApplicationDefined` for what it can't
/// hold.
std::string WriteWorkbook(const Sheet& sheet);

/// Whether a file is a compound file or a zip file, so that it can't be text, whatever its name says.
bool IsCompoundOrZip(std::string_view file);

}  // namespace tessarine::sheets
