#include "office/sheets/BiffReader.h"

#include <bit>
#include <optional>
#include <string>

#include "office/sheets/BiffRecords.h"
#include "office/sheets/CellFormats.h"
#include "office/sheets/Refusal.h"
#include "platform/CodePage.h"

namespace tessarine::sheets
{

namespace
{

/// Where a formula's tokens begin in its record, after their length.
constexpr std::size_t formulaTokens = 22;

/// A number in 30 bits (MS-XLS 2.5.217): the upper ones of a floating-point number or a whole number, either in
/// hundredths.
double NumberOfRk(std::uint32_t rk)
{
    const bool isInteger = (rk & 2) != 0;
    const bool isHundredths = (rk & 1) != 0;
    const double number = isInteger ? static_cast<double>(static_cast<std::int32_t>(rk) >> 2)
                                    : std::bit_cast<double>(static_cast<std::uint64_t>(rk & ~3u) << 32);
    return isHundredths ? number / 100 : number;
}

/// What a CodePage record's number names, for FromCodePage.
std::string NameOfCodePage(std::uint16_t number)
{
    // Old numbers of Excel's own for the Latin characters of the Macintosh and of Windows.
    constexpr std::uint16_t latinOfMacintosh = 0x8000;
    constexpr std::uint16_t latinOfWindows = 0x8001;
    // Excel 97 says 1200 here, UTF-16; its texts never ask for a code page.
    return CodePageName(number == latinOfMacintosh ? 10000 : number == latinOfWindows ? 1252 : number);
}

class BiffStreamReader
{
public:
    BiffStreamReader(std::string_view stream, const Limits& limits) : stream_(stream), sheet_(limits), formats_(limits)
    {
    }

    Sheet Read()
    {
        ReadGlobals();
        if (!firstSheet_)
            throw Refusal("The workbook has no worksheet");
        ReadSheet(*firstSheet_);
        return std::move(sheet_);
    }

private:
    void ReadGlobals()
    {
        BiffStream records(stream_);
        const auto begin = records.NextOf(BiffType::Bof);
        if (!begin)
            throw Damage("its workbook does not begin as one");
        version_ = begin->Short(0);
        if (version_ != biff8 && version_ != biff5)
            throw Refusal("The workbook is of an unknown version");
        while (const auto record = records.Next()) {
            if (record->type == BiffType::Eof)
                return;
            ReadGlobal(records, *record);
        }
        throw Damage("its workbook ends too early");
    }

    void ReadGlobal(BiffStream& records, const BiffRecord& record)
    {
        switch (record.type) {
            case BiffType::FilePass:
                // What comes after this record is encrypted.
                throw Refusal("The workbook is encrypted and needs a password to be opened");
            case BiffType::CodePage:
                codePage_ = NameOfCodePage(record.Short(0));
                break;
            case BiffType::Date1904:
                countsFrom1904_ = record.Short(0) != 0;
                break;
            case BiffType::BoundSheet:
                // The lower byte of the kind alone tells it: 0 is a worksheet.
                if (!firstSheet_ && record.Byte(5) == 0)
                    firstSheet_ = record.Long(0);
                break;
            case BiffType::Format:
                ReadNumberFormat(records, record);
                break;
            case BiffType::Xf:
                formats_.AddCellFormat(record.Short(2));
                break;
            case BiffType::Sst:
                ReadSharedTexts(records, record);
                break;
            default:
                break;
        }
    }

    void ReadNumberFormat(BiffStream& records, const BiffRecord& record)
    {
        RecordBody body(records, record, 2);
        if (version_ == biff8)
            ReadText(body, text_);
        else
            // Excel 95 counts in one byte here, though in two in cells.
            text_ = FromCodePage(body.Bytes(body.Byte()), codePage_);
        formats_.AddNumberFormat(record.Short(0), text_);
    }

    void ReadSharedTexts(BiffStream& records, const BiffRecord& record)
    {
        const std::uint32_t count = record.Long(4);
        RecordBody body(records, record, 8);
        // No memory is taken for the stated number, which may be a lie: a missing text raises.
        for (; sharedTexts_ < count; ++sharedTexts_) {
            ReadText(body, text_);
            sheet_.AddText(text_);  // The sheet's first texts: a shared text's position is its identity.
        }
    }

    void ReadSheet(std::size_t offset)
    {
        BiffStream records(stream_, offset);
        if (!records.NextOf(BiffType::Bof))
            throw Damage("a sheet does not begin where its workbook says");
        std::size_t embedded = 0;  // charts within the sheet have cells of their own
        while (const auto record = records.Next()) {
            if (record->type == BiffType::Bof)
                ++embedded;
            else if (record->type == BiffType::Eof && embedded-- == 0)
                return;
            else if (embedded == 0)
                ReadCell(records, *record);
        }
        throw Damage("its workbook ends too early");
    }

    void ReadCell(BiffStream& records, const BiffRecord& record)
    {
        switch (record.type) {
            case BiffType::Number:
                PutNumber(record, std::bit_cast<double>(record.Quad(6)));
                break;
            case BiffType::Rk:
                PutNumber(record, NumberOfRk(record.Long(6)));
                break;
            case BiffType::MulRk:
                ReadNumbers(record);
                break;
            case BiffType::BoolErr:
                PutBooleanOrError(record, record.Byte(7) != 0, record.Byte(6));
                break;
            case BiffType::LabelSst:
                ReadSharedText(record);
                break;
            case BiffType::Label:
            // Excel 95: RString has formatting runs after its text, which are not read.
            case BiffType::RString:
                PutText(record, TextIn(records, record, 6));
                break;
            case BiffType::Formula:
                ReadFormula(records, record);
                break;
            case BiffType::String:
                // Without a formula in front, the text belongs to no cell.
                if (formula_)
                    PutText(*formula_, TextIn(records, record, 0));
                formula_.reset();
                break;
            default:
                break;
        }
    }

    StringView TextIn(BiffStream& records, const BiffRecord& record, std::size_t offset)
    {
        RecordBody body(records, record, offset);
        if (version_ == biff8)
            ReadText(body, text_);
        else
            text_ = FromCodePage(body.Bytes(body.Short()), codePage_);
        return text_;
    }

    void ReadNumbers(const BiffRecord& record)
    {
        constexpr std::size_t bytesOfEach = 6;
        const std::uint16_t row = record.Short(0);
        std::uint32_t column = record.Short(2);
        // The last column's number follows the values; too short for one, it ends the loop.
        for (std::size_t at = 4; at + bytesOfEach <= record.data.size(); at += bytesOfEach, ++column)
            PutNumber(row, column, record.Short(at), NumberOfRk(record.Long(at + 2)));
    }

    void ReadSharedText(const BiffRecord& record)
    {
        const std::uint32_t text = record.Long(6);
        if (text >= sharedTexts_)
            throw Damage("a cell has a text that is not there");
        sheet_.PutText(record.Short(0), ColumnOf(record.Short(2)), {text});
    }

    /// A formula's result (MS-XLS 2.5.133): a number, or something else when its upper bytes are all ones.
    void ReadFormula(BiffStream& records, const BiffRecord& record)
    {
        enum ResultKind { Text = 0, Boolean = 1, Error = 2, EmptyText = 3 };
        formula_.reset();
        if (IsTextFormula(record)) {
            RecordBody body(records, record, formulaTokens + 1);
            ReadText(body, body.Byte(), text_);
            PutText(record, text_);
            return;
        }
        if (record.Short(12) != 0xFFFF) {
            PutNumber(record, std::bit_cast<double>(record.Quad(6)));
            return;
        }
        switch (record.Byte(6)) {
            case Boolean:
            case Error:
                PutBooleanOrError(record, record.Byte(6) == Error, record.Byte(8));
                break;
            case Text:
                // Until that record comes, and if it is missing, the cell holds an empty text.
                formula_ = record;  // the text follows in a record of its own
                [[fallthrough]];
            case EmptyText:
                PutText(record, {});
                break;
            default:
                throw Damage("a formula has a result of an unknown kind");
        }
    }

    /// Whether the formula is a text alone, ="007" (MS-XLS 2.5.198.89 PtgStr). LibreOffice saves it with the result 0.
    bool IsTextFormula(const BiffRecord& record) const
    {
        constexpr std::uint8_t textToken = 0x17;
        constexpr std::size_t tokenHead = 3;
        if (version_ != biff8 || record.data.size() < formulaTokens + tokenHead ||
            record.Byte(formulaTokens) != textToken)
            return false;
        const std::size_t width = (record.Byte(formulaTokens + 2) & 1) != 0 ? 2 : 1;
        // The token must be the only one: ="a"&B1 begins with the same.
        return record.Short(formulaTokens - 2) == tokenHead + width * record.Byte(formulaTokens + 1);
    }

    static std::uint32_t ColumnOf(std::uint32_t column)
    {
        if (column >= maxBiffColumns)
            throw Damage("a cell lies beyond the last column");
        return column;
    }

    void PutNumber(std::uint32_t row, std::uint32_t column, std::uint16_t format, double number)
    {
        ColumnOf(column);
        if (formats_.IsDate(format)) {
            if (const auto date = DateText(number, countsFrom1904_)) {
                sheet_.Put(row, column, StringView(*date));
                return;
            }
        }
        sheet_.Put(row, column, number);
    }

    // A cell's record begins with row, column and format.
    void PutNumber(const BiffRecord& record, double number)
    {
        PutNumber(record.Short(0), record.Short(2), record.Short(4), number);
    }

    void PutText(const BiffRecord& record, StringView text)
    {
        sheet_.Put(record.Short(0), ColumnOf(record.Short(2)), text);
    }

    void PutBooleanOrError(const BiffRecord& record, bool isError, std::uint8_t value)
    {
        const Cell cell = isError ? Cell(CellError{value}) : Cell(value != 0);
        sheet_.Put(record.Short(0), ColumnOf(record.Short(2)), cell);
    }

    std::string_view stream_;
    Sheet sheet_;
    CellFormats formats_;
    std::uint16_t version_ = 0;
    std::string codePage_ = "windows-1252";  // of texts of Excel 95, unless it says otherwise
    bool countsFrom1904_ = false;
    std::optional<std::uint32_t> firstSheet_;
    std::uint32_t sharedTexts_ = 0;
    std::optional<BiffRecord> formula_;  // the one whose text comes next
    String text_;
};

}  // namespace

Sheet ReadBiff(std::string_view stream, const Limits& limits)
{
    return BiffStreamReader(stream, limits).Read();
}

}  // namespace tessarine::sheets
