#pragma once

#include <vector>

#include <QString>

/// The text that spreadsheets put on the clipboard, and take from there: a line per row, a tab between cells. A cell
/// that holds a tab or a line break stands in quotes, each quote in it twice.
namespace tessarine
{

using TextTable = std::vector<std::vector<QString>>;

/// The rows of a text, each with as many cells as it has. What begins with a quote and has no closing one in front of a
/// tab, a line break or the end is taken as it stands. A line break at the end begins no row.
TextTable CellsOf(const QString& text);

/// The text of rows, with a line break after each. CellsOf gives the same cells again.
QString TextOf(const TextTable& rows);

}  // namespace tessarine
