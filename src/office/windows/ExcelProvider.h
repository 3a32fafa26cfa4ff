#pragma once

#include <memory>

#include "model/Excel.h"

namespace tessarine::windows
{

/// An installed Excel behind the surface for list files, as PowerPointProvider.h tells for PowerPoint. Its refusals
/// have the number `ApplicationDefined`; an Excel that has gone gives `ServerGone` or `RemoteCallFailed`.
///
/// - A text that is put has a leading apostrophe on its way, by which Excel takes it as it is ("007", "=1"). It does
///   not become part of the cell's text. An empty text empties the cell.
/// - The value of a cell with a date is a text, as the system displays the date; one with a sum of money is a number.
std::shared_ptr<excel::Provider> CreateExcelProvider();

}  // namespace tessarine::windows
