#include "office/sheets/BiffWriter.h"

#include <bit>
#include <cmath>

#include "office/sheets/BiffBytes.h"
#include "office/sheets/BiffRecords.h"
#include "office/sheets/Refusal.h"
#include "office/sheets/SharedTexts.h"

namespace tessarine::sheets
{

namespace
{

constexpr StringView sheetName = u"Sheet1";

enum class Substream : std::uint32_t { Globals = 0x0005, Worksheet = 0x0010 };

std::string Begin(Substream kind)
{
    // Build and year are those of Excel 97; the last two say that no later version is needed to read the file.
    return BiffBytes()
        .Shorts({biff8, static_cast<std::uint32_t>(kind), 0x0DBB, 0x07CC})
        .Long(0x41)
        .Long(0x06)
        .Record(BiffType::Bof);
}

std::string End()
{
    return BiffBytes().Record(BiffType::Eof);
}

std::string Font(bool isBold)
{
    constexpr StringView name = u"Arial";
    constexpr std::uint32_t tenPoints = 200, automaticColor = 0x7FFF, normal = 400, bold = 700;
    return BiffBytes()
        .Shorts({tenPoints, 0, automaticColor, isBold ? bold : normal, 0})
        .Long(0)
        .Byte(static_cast<std::uint32_t>(name.size()))
        .Byte(0)
        .Characters(name, false)
        .Record(BiffType::Font);
}

// A workbook begins with 15 styles, of which only the first matters here, and the cell format for ordinary cells.
constexpr std::uint32_t styles = 15;
constexpr std::uint32_t ordinaryFormat = styles;
constexpr std::uint32_t boldFormat = styles + 1;

/// Fonts are counted without 4 (MS-XLS 2.5.129), so the fifth is font 5.
constexpr std::uint32_t boldFont = 5;

enum class FormatKind { Style, Cell };

/// A cell format or the style that it stands on: a font, the number format General, bottom alignment, no border, no
/// fill.
std::string Format(FormatKind kind, std::uint32_t font = 0)
{
    constexpr std::uint32_t locked = 0x0001, styleWithoutParent = 0xFFF5;
    constexpr std::uint32_t bottom = 0x20, automaticFill = 0x20C0;
    const std::uint32_t fontIsOwn = font == 0 ? 0x00 : 0x08;
    return BiffBytes()
        .Shorts({font, 0, kind == FormatKind::Style ? styleWithoutParent : locked})
        .Byte(bottom)
        .Short(0)
        .Byte(fontIsOwn)
        .Quad(0)
        .Short(automaticFill)
        .Record(BiffType::Xf);
}

std::string FontsAndFormats()
{
    std::string records;
    for (int i = 0; i < 4; ++i)
        records += Font(false);
    records += Font(true);
    for (std::uint32_t i = 0; i < styles; ++i)
        records += Format(FormatKind::Style);
    records += Format(FormatKind::Cell) + Format(FormatKind::Cell, boldFont);
    constexpr std::uint32_t builtIn = 0x8000, normal = 0, noOutline = 0xFF;
    return records + BiffBytes().Short(builtIn).Byte(normal).Byte(noOutline).Record(BiffType::Style);
}

std::string BoundSheet(std::size_t offset)
{
    return BiffBytes()
        .Long(static_cast<std::uint32_t>(offset))
        .Short(0)
        .Byte(static_cast<std::uint32_t>(sheetName.size()))
        .Byte(0)
        .Characters(sheetName, false)
        .Record(BiffType::BoundSheet);
}

std::string Globals(const SharedTexts& texts)
{
    constexpr std::uint32_t utf16 = 1200;
    // Of Window1: place and size in twentieths of a point, scroll bars and tabs, the one sheet shown and selected.
    const std::string front = Begin(Substream::Globals) + BiffBytes().Short(utf16).Record(BiffType::CodePage) +
                              BiffBytes().Shorts({0, 0, 0x3A5C, 0x23BE, 0x38, 0, 0, 1, 600}).Record(BiffType::Window1) +
                              FontsAndFormats();
    const std::string back = texts.Records() + End();
    // The sheet comes after the globals, this record among them.
    const std::size_t offset = front.size() + BoundSheet(0).size() + back.size();
    return front + BoundSheet(offset) + back;
}

std::string Dimensions(const Sheet& sheet)
{
    const Sheet::Extent used = sheet.UsedRange();
    return BiffBytes()
        // The ends are those after the last row and column.
        .Long(used.firstRow)
        .Long(used.firstRow + used.rows)
        .Shorts({used.firstColumn, used.firstColumn + used.columns, 0})
        .Record(BiffType::Dimensions);
}

std::string Window()
{
    constexpr std::uint32_t shownAndSelectedWithHeads = 0x06B6, automaticColor = 64;
    return BiffBytes().Shorts({shownAndSelectedWithHeads, 0, 0}).Long(automaticColor).Quad(0).Record(BiffType::Window2);
}

/// The record of a cell's value.
class CellRecord
{
public:
    CellRecord(std::uint32_t row, std::uint32_t column, SharedTexts& texts) : row_(row), column_(column), texts_(texts)
    {
    }

    // Never called, as a sheet visits no empty cells; std::visit wants it.
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(bool value) const { return Begun().Byte(value).Byte(0).Record(BiffType::BoolErr); }
    std::string operator()(CellError value) const { return Begun().Byte(value.code).Byte(1).Record(BiffType::BoolErr); }
    std::string operator()(double value) const
    {
        constexpr CellError notANumber{0x24};
        if (!std::isfinite(value))
            return (*this)(notANumber);
        return Begun().Quad(std::bit_cast<std::uint64_t>(value)).Record(BiffType::Number);
    }
    std::string operator()(StringView value) const
    {
        if (value.size() > maxCellText)
            throw Refusal("A cell holds no more than 32767 characters");
        return Begun().Long(texts_.Add(value)).Record(BiffType::LabelSst);
    }

private:
    BiffBytes Begun() const { return BiffBytes().Shorts({row_, column_, row_ == 0 ? boldFormat : ordinaryFormat}); }

    std::uint32_t row_;
    std::uint32_t column_;
    SharedTexts& texts_;
};

}  // namespace

std::string WriteBiff(const Sheet& sheet)
{
    const Sheet::Extent used = sheet.UsedRange();
    if (used.firstRow + used.rows > maxBiffRows || used.firstColumn + used.columns > maxBiffColumns)
        throw Refusal("An Excel 97-2003 workbook has no more than 65536 rows and 256 columns");
    // The cells come first, because they fill the table of texts, which stands in front of them.
    SharedTexts texts;
    std::string cells;
    sheet.ForEach([&](std::uint32_t row, std::uint32_t column, const Cell& cell) {
        cells += std::visit(CellRecord(row, column, texts), cell);
    });
    return Globals(texts) + Begin(Substream::Worksheet) + Dimensions(sheet) + cells + Window() + End();
}

}  // namespace tessarine::sheets
