#include "office/sheets/XlsxReader.h"

#include <charconv>
#include <chrono>
#include <optional>
#include <span>
#include <string>

#include "office/builtin/package/Package.h"
#include "office/builtin/xml/XmlDocument.h"
#include "office/builtin/xml/XmlText.h"
#include "office/sheets/CellErrors.h"
#include "office/sheets/CellFormats.h"
#include "office/sheets/FieldValue.h"
#include "office/sheets/Refusal.h"
#include "office/sheets/XlsxText.h"

namespace tessarine::sheets
{

namespace
{

using builtin::Node;
using builtin::Ns;
using builtin::XmlDocument;
using Part = builtin::Package::Entry;

builtin::Limits PackageLimits(const Limits& limits)
{
    builtin::Limits all = builtin::Limits::Default();
    all.partBytes = limits.partBytes;
    all.packageXmlBytes = limits.allPartBytes;
    return all;
}

bool IsXmlBlank(char16_t unit)
{
    return unit == u' ' || unit == u'\t' || unit == u'\n' || unit == u'\r';
}

template <class Number>
std::optional<Number> WholeNumber(std::string_view text)
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// The number that a date stands for (ISO 8601, "2024-01-31T12:30:00.5Z"), in days from 1900 on; nothing for anything
/// else. Strict workbooks hold dates so (ECMA-376 part 1, 18.18.11 ST_CellType).
std::optional<double> NumberOfDate(std::string_view text)
{
    using namespace std::chrono;
    const auto part = [&](std::size_t at, std::size_t length) {
        return text.size() >= at + length ? WholeNumber<unsigned>(text.substr(at, length)) : std::nullopt;
    };
    const auto yearPart = part(0, 4), monthPart = part(5, 2), dayPart = part(8, 2);
    if (!yearPart || !monthPart || !dayPart || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    const year_month_day date(year(static_cast<int>(*yearPart)), month(*monthPart), day(*dayPart));
    if (!date.ok())
        return std::nullopt;

    double seconds = 0;
    if (text.size() > 10) {
        const auto hours = part(11, 2), minutes = part(14, 2);
        if (text[10] != 'T' || !hours || !minutes || text[13] != ':')
            return std::nullopt;
        seconds = *hours * 3600.0 + *minutes * 60.0;
        // Fractions of a second and the zone, which is that of nowhere, don't show.
        if (const auto last = part(17, 2))
            seconds += *last;
    }
    constexpr int daysUntil1970 = 25569;
    constexpr int firstOfMarch1900 = 61;  // the day before it is one that never was, which Excel counts
    const int days = static_cast<int>(sys_days(date).time_since_epoch().count()) + daysUntil1970;
    return (days < firstOfMarch1900 ? days - 1 : days) + seconds / 86400;
}

/// A part and the index of its elements, which borrows from it.
struct OpenPart {
    OpenPart(const builtin::Package& package, Part part)
        : name(package.NameOf(part)), bytes(package.ReadXml(part)), document(bytes, name, package.limits())
    {
    }
    OpenPart(const OpenPart&) = delete;
    OpenPart& operator=(const OpenPart&) = delete;

    std::string name;
    std::string bytes;
    XmlDocument document;
};

class XlsxFileReader
{
public:
    XlsxFileReader(std::string_view file, const Limits& limits)
        : package_(BytesInMemory(std::as_bytes(std::span(file))), PackageLimits(limits)),
          sheet_(limits),
          formats_(limits)
    {
    }

    Sheet Read()
    {
        const Part workbook = FindWorkbook();
        const Part worksheet = FirstWorksheet(workbook);
        auto& links = package_.RelationshipsOf(workbook);
        if (const auto formats = package_.Follow(workbook, links.FirstOf("styles")))
            ReadStyles(*formats);
        if (const auto texts = package_.Follow(workbook, links.FirstOf("sharedStrings")))
            ReadSharedTexts(*texts);
        ReadSheet(worksheet);
        return std::move(sheet_);
    }

private:
    [[noreturn]] void Fail(const std::string& what) const { throw Damage(where_ + ": " + what); }

    Part FindWorkbook()
    {
        const auto part = package_.Follow({}, package_.RelationshipsOf(std::nullopt).FirstOf("officeDocument"));
        if (!part)
            throw Refusal("The file is a zip file, not a workbook");
        if (package_.NameOf(*part).ends_with(".bin"))
            throw Refusal("The file is a binary workbook of Excel 2007 or later (.xlsb); save it as .xlsx first");
        return *part;
    }

    /// Reads what the workbook says of its dates, too.
    Part FirstWorksheet(Part workbook)
    {
        const OpenPart open(package_, workbook);
        const XmlDocument& document = open.document;
        where_ = open.name;
        if (!document.Is(document.Root(), Ns::Spreadsheet, "workbook"))
            throw Refusal("The file is some other Office document, not a workbook");
        const Node properties = document.Child(document.Root(), Ns::Spreadsheet, "workbookPr");
        countsFrom1904_ = document.BooleanAttribute(properties, "date1904", false);
        const auto& links = package_.RelationshipsOf(workbook);
        for (const Node sheet : document.Child(document.Root(), Ns::Spreadsheet, "sheets").ChildElements()) {
            if (!document.Is(sheet, Ns::Spreadsheet, "sheet"))
                continue;
            const auto id = document.Attribute(sheet, Ns::DocumentRelationships, "id");
            const builtin::Relationship* const link = id ? links.Find(*id) : nullptr;
            if (link && !link->Is("worksheet"))
                continue;
            if (const auto part = package_.Follow(workbook, link))
                return *part;
            Fail("a sheet of it is missing");
        }
        throw Refusal("The workbook has no worksheet");
    }

    void ReadStyles(Part part)
    {
        const OpenPart open(package_, part);
        const XmlDocument& document = open.document;
        where_ = open.name;
        for (const Node format : document.Child(document.Root(), Ns::Spreadsheet, "numFmts").ChildElements())
            if (const auto id = WholeNumber<std::uint32_t>(document.Attribute(format, "numFmtId")))
                formats_.AddNumberFormat(*id, FromUtf8(document.Attribute(format, "formatCode")));
        for (const Node format : document.Child(document.Root(), Ns::Spreadsheet, "cellXfs").ChildElements())
            formats_.AddCellFormat(WholeNumber<std::uint32_t>(document.Attribute(format, "numFmtId")).value_or(0));
    }

    void ReadSharedTexts(Part part)
    {
        const OpenPart open(package_, part);
        where_ = open.name;
        for (const Node item : open.document.Root().ChildElements()) {
            if (!open.document.Is(item, Ns::Spreadsheet, "si"))
                continue;
            // The sheet's first texts: a shared text's position is its identity.
            sheet_.AddText(RichText(open.document, item));
            ++sharedTexts_;
        }
    }

    /// The text of an element that holds one as a whole or in runs. Phonetic runs tell how it is read aloud.
    StringView RichText(const XmlDocument& document, Node node)
    {
        text_.clear();
        for (const Node child : node.ChildElements()) {
            if (document.Is(child, Ns::Spreadsheet, "t"))
                AppendText(document, child);
            else if (document.Is(child, Ns::Spreadsheet, "r"))
                AppendText(document, document.Child(child, Ns::Spreadsheet, "t"));
        }
        return text_;
    }

    static StringView WithoutBlanks(StringView text)
    {
        while (!text.empty() && IsXmlBlank(text.front()))
            text.remove_prefix(1);
        while (!text.empty() && IsXmlBlank(text.back()))
            text.remove_suffix(1);
        return text;
    }

    /// An element's characters as they are written, but for escapes.
    StringView CharactersOf(const XmlDocument& document, Node node)
    {
        characters_.clear();
        if (node) {
            const builtin::ElementRange range = document.RangeOf(node);
            builtin::AppendCharacters(
                document.Bytes().substr(range.contentBegin, range.contentEnd - range.contentBegin), characters_,
                builtin::InnerElements::Skipped);
        }
        return characters_;
    }

    void AppendText(const XmlDocument& document, Node node)
    {
        StringView text = CharactersOf(document, node);
        const bool hasBlanksAround = !text.empty() && (IsXmlBlank(text.front()) || IsXmlBlank(text.back()));
        if (hasBlanksAround && !KeepsBlanks(document, node))
            text = WithoutBlanks(text);
        // Afterwards, because an escaped line end at an end of the text is no blank of the markup.
        String joined(text);
        JoinEscapes(joined);
        text_ += joined;
    }

    /// Whether blanks at the ends of an element's text belong to it (XML 1.0, 2.10); Excel drops them otherwise.
    static bool KeepsBlanks(const XmlDocument& document, Node node)
    {
        for (; node; node = document.ParentOf(node)) {
            std::optional<bool> keeps;
            document.ForEachAttribute(node, [&](std::string_view name, std::string_view value) {
                if (name == "xml:space")
                    keeps = value == "preserve";
            });
            if (keeps)
                return *keeps;
        }
        return false;
    }

    void ReadSheet(Part part)
    {
        const OpenPart open(package_, part);
        const XmlDocument& document = open.document;
        where_ = open.name;
        if (!document.Is(document.Root(), Ns::Spreadsheet, "worksheet"))
            Fail("it is no worksheet");
        std::uint32_t nextRow = 0;
        for (const Node row : document.Child(document.Root(), Ns::Spreadsheet, "sheetData").ChildElements())
            if (document.Is(row, Ns::Spreadsheet, "row"))
                ReadRow(document, row, nextRow);
    }

    /// A row's cells. `nextRow` is where a row stands that doesn't say so, counted from 0, and then the row after this.
    void ReadRow(const XmlDocument& document, Node row, std::uint32_t& nextRow)
    {
        std::uint32_t number = nextRow;
        if (const std::string_view given = document.Attribute(row, "r"); !given.empty())
            number = RowNumber(given);
        if (number < nextRow)
            Fail("its rows are not in order");
        if (number >= Sheet::maxRows)
            Fail("a row lies beyond the last one");
        nextRow = number + 1;

        std::uint32_t nextColumn = 0;
        for (const Node cell : row.ChildElements()) {
            if (!document.Is(cell, Ns::Spreadsheet, "c"))
                continue;
            std::uint32_t column = nextColumn;
            if (const std::string_view given = document.Attribute(cell, "r"); !given.empty())
                column = ColumnIn(given, number);
            // Excel, too, takes such a file for damaged. Without the order a row would take time by its square.
            if (column < nextColumn)
                Fail("the cells of row " + std::to_string(number + 1) + " are not in order");
            if (column >= Sheet::maxColumns)
                Fail("a cell of row " + std::to_string(number + 1) + " lies beyond the last column");
            nextColumn = column + 1;
            ReadCell(document, cell, number, column);
        }
    }

    /// From 0; the text counts from 1.
    std::uint32_t RowNumber(std::string_view text) const
    {
        const auto number = WholeNumber<std::uint32_t>(text);
        if (!number || *number < 1 || *number > Sheet::maxRows)
            Fail("\"" + std::string(text.substr(0, 20)) + "\" is no number of a row");
        return *number - 1;
    }

    /// The column of a reference such as "B12", from 0, whose row must be this one.
    std::uint32_t ColumnIn(std::string_view reference, std::uint32_t row) const
    {
        constexpr std::uint32_t letters = 26;
        std::uint32_t column = 0;
        std::string_view rest = reference;
        while (!rest.empty() && rest.front() >= 'A' && rest.front() <= 'Z' && column <= Sheet::maxColumns) {
            column = column * letters + static_cast<std::uint32_t>(rest.front() - 'A' + 1);
            rest.remove_prefix(1);
        }
        if (column == 0 || column > Sheet::maxColumns || RowNumber(rest) != row)
            Fail("\"" + std::string(reference.substr(0, 20)) + "\" is no cell of row " + std::to_string(row + 1));
        return column - 1;
    }

    void ReadCell(const XmlDocument& document, Node cell, std::uint32_t row, std::uint32_t column)
    {
        const std::string_view type = document.Attribute(cell, "t");
        if (type == "inlineStr") {
            if (const Node text = document.Child(cell, Ns::Spreadsheet, "is"))
                sheet_.Put(row, column, RichText(document, text));
            return;
        }
        const Node node = document.Child(cell, Ns::Spreadsheet, "v");
        const Node formula = document.Child(cell, Ns::Spreadsheet, "f");
        if (type == "str" && node) {
            text_.clear();
            AppendText(document, node);
            sheet_.Put(row, column, StringView(text_));
            return;
        }
        const std::string value = ToUtf8(WithoutBlanks(CharactersOf(document, node)));
        if (!value.empty())
            PutValue(type, value, document.Attribute(cell, "s"), row, column);
        else if (formula)
            PutFormula(document, formula, row, column);
    }

    void PutFormula(const XmlDocument& document, Node formula, std::uint32_t row, std::uint32_t column)
    {
        String text;
        if (!ReadTextFormula(u"=" + String(CharactersOf(document, formula)), text))
            // As an empty cell it would have a text replaced by nothing.
            throw Refusal("Row " + std::to_string(row + 1) + " has a formula in column " + std::to_string(column + 1) +
                          " that was never calculated; open the workbook in a spreadsheet program and save it");
        sheet_.Put(row, column, StringView(text));
    }

    void PutValue(std::string_view type, const std::string& value, std::string_view style, std::uint32_t row,
                  std::uint32_t column)
    {
        const auto fail = [&](const std::string& what) {
            Fail("column " + std::to_string(column + 1) + " of row " + std::to_string(row + 1) + " has " + what);
        };
        if (type.empty() || type == "n") {
            const auto number = WholeNumber<double>(value);
            if (!number)
                fail("a number that is none");
            const auto format = WholeNumber<std::uint32_t>(style);
            PutNumber(*number, format && formats_.IsDate(*format), countsFrom1904_, row, column);
        } else if (type == "s") {
            const auto text = WholeNumber<std::uint32_t>(value);
            if (!text || *text >= sharedTexts_)
                fail("a text that is not there");
            sheet_.PutText(row, column, {*text});
        } else if (type == "b") {
            if (value != "0" && value != "1" && value != "false" && value != "true")
                fail("a boolean that is none");
            sheet_.Put(row, column, value == "1" || value == "true");
        } else if (type == "e") {
            // Later versions of Excel have further errors, which have no code.
            constexpr CellError other{0xFF};
            sheet_.Put(row, column, ErrorNamed(value).value_or(other));
        } else if (type == "d") {
            const auto number = NumberOfDate(value);
            if (!number)
                fail("a date that is none");
            PutNumber(*number, true, false, row, column);
        } else {
            fail("a value of an unknown kind");
        }
    }

    void PutNumber(double number, bool isDate, bool countsFrom1904, std::uint32_t row, std::uint32_t column)
    {
        const auto date = isDate ? DateText(number, countsFrom1904) : std::nullopt;
        sheet_.Put(row, column, date ? Cell(StringView(*date)) : Cell(number));
    }

    builtin::Package package_;
    Sheet sheet_;
    CellFormats formats_;
    bool countsFrom1904_ = false;
    std::uint32_t sharedTexts_ = 0;
    std::string where_;  // the part that is being read, for failures
    String text_;
    String characters_;
};

}  // namespace

Sheet ReadXlsx(std::string_view file, const Limits& limits)
{
    try {
        return XlsxFileReader(file, limits).Read();
    } catch (const Failure& failure) {
        // Packages have numbers of their own for what is wrong with them.
        throw Failure(FailureNumber::ApplicationDefined, failure.description);
    }
}

}  // namespace tessarine::sheets
