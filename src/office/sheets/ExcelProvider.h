#pragma once

#include <memory>

#include "model/Excel.h"

namespace tessarine::sheets
{

/// The built-in spreadsheet engine behind the surface for list files: binary workbooks (.xls) and separated text (.csv,
/// .tab), as OpenSheet and SaveSheet tell. There is always an application to start; nothing of it runs on when nobody
/// holds it any more.
///
/// - A workbook has one sheet, its file's first worksheet. Its used range is the rectangle around the cells
///   with values; cells with formatting alone don't count, unlike in Excel. It has up to 1048576 rows and 16384
///   columns; a .xls file takes 65536 and 256 of them.
/// - PutValue with an empty text empties the cell, as in Excel; one of more than 32767 UTF-16 units raises
///   `ApplicationDefined`.
/// - While alerts are displayed, SaveAs raises `ApplicationDefined` where a file would be replaced: there is nobody to
///   ask. Save, and Close with xlSaveChanges, raise it for a changed workbook that has no name yet.
std::shared_ptr<excel::Provider> CreateProvider();

}  // namespace tessarine::sheets
