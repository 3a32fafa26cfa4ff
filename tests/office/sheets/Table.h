#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "office/sheets/CellErrors.h"
#include "office/sheets/FieldValue.h"
#include "office/sheets/Sheet.h"

namespace tessarine::sheets
{

/// A cell's value written down, so that tests can compare whole tables: "" empty, "TRUE", "#N/A", numbers bare, texts
/// in quotes.
inline std::string Shown(const Cell& cell)
{
    struct Show {
        std::string operator()(std::monostate) const { return ""; }
        std::string operator()(bool value) const { return value ? "TRUE" : "FALSE"; }
        std::string operator()(double value) const { return FieldOfNumber(value); }
        std::string operator()(StringView value) const { return '\'' + ToUtf8(value) + '\''; }
        std::string operator()(CellError value) const { return NameOfError(value); }
    };
    return std::visit(Show(), cell);
}

/// The rows of a sheet from its first cell to the end of its used range.
inline std::vector<std::vector<std::string>> TableOf(const Sheet& sheet)
{
    const Sheet::Extent used = sheet.UsedRange();
    std::vector<std::vector<std::string>> table(used.firstRow + used.rows);
    for (std::uint32_t row = 0; row < table.size(); ++row)
        for (std::uint32_t column = 0; column < used.firstColumn + used.columns; ++column)
            table[row].push_back(Shown(sheet.At(row, column)));
    return table;
}

using Rows = std::vector<std::vector<std::string>>;

}  // namespace tessarine::sheets
