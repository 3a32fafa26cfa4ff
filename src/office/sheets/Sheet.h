#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "office/sheets/Limits.h"
#include "platform/String.h"

namespace tessarine::sheets
{

/// An error as a cell's value, by its code in a binary workbook (MS-XLS 2.5.10 BErr): 0x07 is #DIV/0!.
struct CellError {
    std::uint8_t code = 0;
    bool operator==(const CellError&) const = default;
};

/// A cell's value: empty, boolean, number, text or error. Boolean true and the number 1 are different. A text read from
/// a sheet is borrowed until the sheet changes.
using Cell = std::variant<std::monostate, bool, double, StringView, CellError>;

/// A table of cells. Only cells with a value take up memory, so a lone cell in the last corner is cheap. Rows and
/// columns count from 0.
class Sheet
{
public:
    /// Those of a sheet in Excel 2007 and later.
    static constexpr std::uint32_t maxRows = 1u << 20;
    static constexpr std::uint32_t maxColumns = 1u << 14;

    /// A text kept once, for any number of cells: its position among all texts, from 0.
    struct TextId {
        std::uint32_t index = 0;
    };

    /// The smallest rectangle around all cells with a value, empty texts among them; one cell at the first place when
    /// there are none. Rows and columns count from 0.
    struct Extent {
        std::uint32_t firstRow = 0, rows = 1, firstColumn = 0, columns = 1;
        bool operator==(const Extent&) const = default;
    };

    /// Empty. The limits hold for all that is put later.
    explicit Sheet(const Limits& limits = Limits::Default()) : limits_(limits) {}

    /// The value at a place; empty where none was put, beyond the limits too.
    Cell At(std::uint32_t row, std::uint32_t column) const;

    /// Puts a value in place of the old one; empty takes it away. Raises `ApplicationDefined` beyond the limits.
    void Put(std::uint32_t row, std::uint32_t column, const Cell& value);
    /// Puts a text of this sheet in place of the old value. Raises as Put does.
    void PutText(std::uint32_t row, std::uint32_t column, TextId text);

    TextId AddText(StringView text);  ///< Raises `ApplicationDefined` beyond the limits.
    /// Borrowed until the next text is added.
    StringView Text(TextId text) const;

    /// Walks over all rows, so that it should not be asked for each cell.
    Extent UsedRange() const;

    /// Calls `visit(row, column, cell)` for each cell with a value, row by row and in a row from left to right.
    template <class Visit>
    void ForEach(Visit visit) const
    {
        for (std::uint32_t row = 0; row < rows_.size(); ++row)
            for (const Stored& stored : rows_[row])
                visit(row, stored.column, ValueOf(stored));
    }

private:
    enum class Kind : std::uint16_t { Boolean, Number, Text, Error };

    struct Stored {
        std::uint32_t column;
        Kind kind;
        std::uint64_t bits;  // the number's, or the boolean, the code, the text's index
    };

    /// In characters_, in UTF-16 units.
    struct Range {
        std::uint32_t start, length;
    };

    Cell ValueOf(const Stored& stored) const;
    void Store(std::uint32_t row, std::uint32_t column, Kind kind, std::uint64_t bits);
    void Clear(std::uint32_t row, std::uint32_t column);

    Limits limits_;
    std::vector<std::vector<Stored>> rows_;  // each in the order of columns
    std::size_t cells_ = 0;                  // with a value
    String characters_;                      // of all texts
    std::size_t cellUnits_ = 0;              // of the texts of all cells that were ever put
    std::vector<Range> texts_;               // by TextId
};

}  // namespace tessarine::sheets
