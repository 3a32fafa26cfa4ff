#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "office/sheets/Limits.h"
#include "platform/String.h"

namespace tessarine::sheets
{

/// Whether a number format's code shows a date or a time: it has one of the letters d, m, y, h, s outside of quotes,
/// brackets and escapes in its first section.
bool ShowsDate(StringView code);

/// The date that a workbook's number stands for, as the system displays dates. Nothing for a number that is no day of
/// the calendar, such as a time without a date. Days count from 1900 or, for workbooks that say so, from 1904.
std::optional<String> DateText(double number, bool countsFrom1904);

/// The formats of a workbook's cells, as far as they tell dates from numbers.
class CellFormats
{
public:
    explicit CellFormats(const Limits& limits) : limits_(limits) {}

    /// Keeps whether a number format's code shows a date. Raises `ApplicationDefined` beyond the limits.
    void AddNumberFormat(std::uint32_t id, StringView code);

    /// A cell format, by the number format that it uses. Cells name these by their position. Raises
    /// `ApplicationDefined` beyond the limits.
    void AddCellFormat(std::uint32_t numberFormat);

    /// Whether a cell of this format shows a date; no for a format that there isn't.
    bool IsDate(std::uint32_t cellFormat) const;

private:
    Limits limits_;
    std::map<std::uint32_t, bool> ofNumbers_;  // whether it shows a date
    std::vector<std::uint32_t> ofCells_;       // the number format of each
};

}  // namespace tessarine::sheets
