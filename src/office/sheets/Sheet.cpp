#include "office/sheets/Sheet.h"

#include <algorithm>
#include <bit>

#include "office/sheets/Refusal.h"

namespace tessarine::sheets
{

namespace
{

/// The cell of a column in a row, or where it belongs. A row without gaps has it at the column's own place.
template <class Row>
auto PlaceIn(Row& row, std::uint32_t column)
{
    if (column < row.size() && row[column].column == column)
        return row.begin() + column;
    // Cells are mostly put from left to right.
    if (row.empty() || row.back().column < column)
        return row.end();
    return std::ranges::lower_bound(row, column, {}, [](const auto& stored) { return stored.column; });
}

}  // namespace

Cell Sheet::ValueOf(const Stored& stored) const
{
    switch (stored.kind) {
        case Kind::Boolean:
            return stored.bits != 0;
        case Kind::Number:
            return std::bit_cast<double>(stored.bits);
        case Kind::Text:
            return Text({static_cast<std::uint32_t>(stored.bits)});
        case Kind::Error:
            break;
    }
    return CellError{static_cast<std::uint8_t>(stored.bits)};
}

Cell Sheet::At(std::uint32_t row, std::uint32_t column) const
{
    if (row >= rows_.size())
        return {};
    const auto place = PlaceIn(rows_[row], column);
    return place == rows_[row].end() || place->column != column ? Cell() : ValueOf(*place);
}

void Sheet::Put(std::uint32_t row, std::uint32_t column, const Cell& value)
{
    if (const bool* boolean = std::get_if<bool>(&value))
        Store(row, column, Kind::Boolean, *boolean ? 1 : 0);
    else if (const double* number = std::get_if<double>(&value))
        Store(row, column, Kind::Number, std::bit_cast<std::uint64_t>(*number));
    else if (const StringView* text = std::get_if<StringView>(&value))
        // The text of a value that is replaced stays in memory: sheets are filled once, and replaced seldom.
        PutText(row, column, AddText(*text));
    else if (const CellError* error = std::get_if<CellError>(&value))
        Store(row, column, Kind::Error, error->code);
    else
        Clear(row, column);
}

void Sheet::PutText(std::uint32_t row, std::uint32_t column, TextId text)
{
    // Whoever reads the cells takes memory for each: one long text in all of them would be gigabytes.
    const std::size_t units = texts_.at(text.index).length;
    if (units > limits_.cellUnits - cellUnits_)
        throw Refusal("The sheet holds more text than can be read");
    Store(row, column, Kind::Text, text.index);
    cellUnits_ += units;
}

Sheet::TextId Sheet::AddText(StringView text)
{
    // The limit keeps all offsets within the 32 bits of Range.
    if (text.size() > limits_.textUnits - characters_.size() || texts_.size() >= limits_.cells)
        throw Refusal("The sheet holds more text than can be read");
    texts_.push_back({static_cast<std::uint32_t>(characters_.size()), static_cast<std::uint32_t>(text.size())});
    characters_ += text;
    return {static_cast<std::uint32_t>(texts_.size() - 1)};
}

StringView Sheet::Text(TextId text) const
{
    const Range& range = texts_.at(text.index);
    return StringView(characters_).substr(range.start, range.length);
}

void Sheet::Store(std::uint32_t row, std::uint32_t column, Kind kind, std::uint64_t bits)
{
    if (row >= maxRows || column >= maxColumns)
        throw Refusal("A sheet has no more than 1048576 rows and 16384 columns");
    if (row >= rows_.size())
        // An empty row costs a vector without memory of its own, even a million of them little.
        rows_.resize(row + 1);
    auto& cells = rows_[row];
    const auto place = PlaceIn(cells, column);
    if (place != cells.end() && place->column == column) {
        *place = {column, kind, bits};
        return;
    }
    // After the replacement of a value, which takes no memory.
    if (cells_ >= limits_.cells)
        throw Refusal("The sheet holds more cells than can be read");
    cells.insert(place, {column, kind, bits});
    ++cells_;
}

void Sheet::Clear(std::uint32_t row, std::uint32_t column)
{
    if (row >= rows_.size())
        return;
    auto& cells = rows_[row];
    const auto place = PlaceIn(cells, column);
    if (place == cells.end() || place->column != column)
        return;
    cells.erase(place);
    --cells_;
}

Sheet::Extent Sheet::UsedRange() const
{
    Extent extent{maxRows, 0, maxColumns, 0};
    std::uint32_t lastRow = 0, lastColumn = 0;
    for (std::uint32_t row = 0; row < rows_.size(); ++row) {
        // Never put to, or emptied again.
        if (rows_[row].empty())
            continue;
        extent.firstRow = std::min(extent.firstRow, row);
        lastRow = row;
        extent.firstColumn = std::min(extent.firstColumn, rows_[row].front().column);
        lastColumn = std::max(lastColumn, rows_[row].back().column);
    }
    if (extent.firstRow == maxRows)
        return {};
    extent.rows = lastRow - extent.firstRow + 1;
    extent.columns = lastColumn - extent.firstColumn + 1;
    return extent;
}

}  // namespace tessarine::sheets
