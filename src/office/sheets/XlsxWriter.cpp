#include "office/sheets/XlsxWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "office/builtin/zip/NewZip.h"
#include "office/sheets/BiffWriter.h"
#include "office/sheets/CellErrors.h"
#include "office/sheets/Refusal.h"
#include "office/sheets/SharedTexts.h"
#include "office/sheets/XlsxText.h"

namespace tessarine::sheets
{

namespace
{

const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
const std::string spreadsheet = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
const std::string relationships = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

std::string ContentTypes()
{
    const std::string type = "application/vnd.openxmlformats-officedocument.spreadsheetml.";
    const auto part = [&](const std::string& name, const std::string& kind) {
        return "<Override PartName=\"/xl/" + name + "\" ContentType=\"" + type + kind + "+xml\"/>";
    };
    return head + "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">" +
           "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>" +
           "<Default Extension=\"xml\" ContentType=\"application/xml\"/>" + part("workbook.xml", "sheet.main") +
           part("worksheets/sheet1.xml", "worksheet") + part("styles.xml", "styles") +
           part("sharedStrings.xml", "sharedStrings") + "</Types>";
}

/// A relationship part with these targets, each after its kind, under the ids rId1 and so on.
std::string Relationships(const std::vector<std::pair<std::string, std::string>>& targets)
{
    std::string part = head + "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    int id = 0;
    for (const auto& [kind, target] : targets)
        part += "<Relationship Id=\"rId" + std::to_string(++id) + "\" Type=\"" + relationships + "/" + kind +
                "\" Target=\"" + target + "\"/>";
    return part + "</Relationships>";
}

std::string Workbook()
{
    return head + "<workbook xmlns=\"" + spreadsheet + "\" xmlns:r=\"" + relationships +
           "\"><sheets><sheet name=\"Sheet1\" sheetId=\"1\" r:id=\"rId1\"/></sheets></workbook>";
}

// The cell formats below, by their position. 49 is the built-in number format "@", Text.
enum CellStyle { General = 0, Text = 1, Bold = 2 };

std::string Styles()
{
    const std::string font = "<sz val=\"11\"/><name val=\"Calibri\"/><family val=\"2\"/>";
    return head + "<styleSheet xmlns=\"" + spreadsheet + "\"><fonts count=\"2\"><font>" + font + "</font><font><b/>" +
           font + "</font></fonts>" +
           // Excel takes the first two fills for these whatever stands here.
           "<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
           "<fill><patternFill patternType=\"gray125\"/></fill></fills>"
           "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
           "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/></cellStyleXfs>"
           "<cellXfs count=\"3\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/>"
           "<xf numFmtId=\"49\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyNumberFormat=\"1\"/>"
           "<xf numFmtId=\"49\" fontId=\"1\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyNumberFormat=\"1\" "
           "applyFont=\"1\"/></cellXfs>"
           "<cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles></styleSheet>";
}

std::string SharedTextsPart(const SharedTexts& texts)
{
    std::string part = head + "<sst xmlns=\"" + spreadsheet + "\" count=\"" + std::to_string(texts.Cells()) +
                       "\" uniqueCount=\"" + std::to_string(texts.Texts().size()) + "\">";
    for (const StringView text : texts.Texts()) {
        // Without it, readers drop the blanks at the ends of a text.
        const auto isBlank = [](char16_t unit) { return unit == u' ' || unit == u'\t' || unit == u'\n'; };
        const bool keepsBlanks = !text.empty() && (isBlank(text.front()) || isBlank(text.back()));
        part += keepsBlanks ? "<si><t xml:space=\"preserve\">" : "<si><t>";
        part += EscapeCellText(text) + "</t></si>";
    }
    return part + "</sst>";
}

/// "A1" for the first cell. Both count from 0.
std::string Reference(std::uint32_t row, std::uint32_t column)
{
    constexpr std::uint32_t letters = 26;
    std::string name;
    for (std::uint32_t rest = column + 1; rest > 0; rest = (rest - 1) / letters)
        name.insert(name.begin(), static_cast<char>('A' + (rest - 1) % letters));
    return name + std::to_string(row + 1);
}

/// The element of a cell's value.
class CellElement
{
public:
    CellElement(std::uint32_t row, std::uint32_t column, SharedTexts& texts) : row_(row), column_(column), texts_(texts)
    {
    }

    // Never called, as a sheet visits no empty cells; std::visit wants it.
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(bool value) const { return Element("b", value ? "1" : "0", General); }
    std::string operator()(CellError value) const
    {
        const bool isKnown = ErrorNamed(NameOfError(value)).has_value();
        return Element("e", isKnown ? NameOfError(value) : "#VALUE!", General);
    }
    std::string operator()(double value) const
    {
        constexpr CellError notANumber{0x24};
        if (!std::isfinite(value))
            return (*this)(notANumber);
        std::array<char, 32> buffer;
        return Element("n", {buffer.data(), std::to_chars(buffer.begin(), buffer.end(), value).ptr}, General);
    }
    std::string operator()(StringView value) const
    {
        if (value.size() > maxCellText)
            throw Refusal("A cell holds no more than 32767 characters");
        return Element("s", std::to_string(texts_.Add(value)), Text);
    }

private:
    std::string Element(const std::string& type, const std::string& value, CellStyle format) const
    {
        const int style = row_ == 0 ? Bold : format;
        return "<c r=\"" + Reference(row_, column_) + "\"" +
               (style == General ? "" : " s=\"" + std::to_string(style) + "\"") + " t=\"" + type + "\"><v>" + value +
               "</v></c>";
    }

    std::uint32_t row_;
    std::uint32_t column_;
    SharedTexts& texts_;
};

std::string Worksheet(const Sheet& sheet, SharedTexts& texts)
{
    const Sheet::Extent used = sheet.UsedRange();
    std::string part = head + "<worksheet xmlns=\"" + spreadsheet + "\"><dimension ref=\"" +
                       Reference(used.firstRow, used.firstColumn) + ":" +
                       Reference(used.firstRow + used.rows - 1, used.firstColumn + used.columns - 1) +
                       "\"/><sheetData>";
    std::uint32_t openRow = Sheet::maxRows;
    sheet.ForEach([&](std::uint32_t row, std::uint32_t column, const Cell& cell) {
        if (row != openRow) {
            part += openRow == Sheet::maxRows ? "" : "</row>";
            part += "<row r=\"" + std::to_string(row + 1) + "\">";
            openRow = row;
        }
        part += std::visit(CellElement(row, column, texts), cell);
    });
    return part + (openRow == Sheet::maxRows ? "" : "</row>") + "</sheetData></worksheet>";
}

}  // namespace

std::string WriteXlsx(const Sheet& sheet)
{
    SharedTexts texts;
    // The cells come first, because they fill the table of texts.
    const std::string worksheet = Worksheet(sheet, texts);
    return builtin::NewZip({{"[Content_Types].xml", ContentTypes()},
                            {"_rels/.rels", Relationships({{"officeDocument", "xl/workbook.xml"}})},
                            {"xl/workbook.xml", Workbook()},
                            {"xl/_rels/workbook.xml.rels", Relationships({{"worksheet", "worksheets/sheet1.xml"},
                                                                          {"styles", "styles.xml"},
                                                                          {"sharedStrings", "sharedStrings.xml"}})},
                            {"xl/worksheets/sheet1.xml", worksheet},
                            {"xl/styles.xml", Styles()},
                            {"xl/sharedStrings.xml", SharedTextsPart(texts)}});
}

}  // namespace tessarine::sheets
