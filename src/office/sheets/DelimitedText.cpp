#include "office/sheets/DelimitedText.h"

#include <algorithm>

#include "office/sheets/CellErrors.h"
#include "office/sheets/FieldValue.h"
#include "office/sheets/Refusal.h"

namespace tessarine::sheets
{

namespace
{

constexpr StringView separatorLine = u"sep=";

bool IsLineEnd(char16_t unit)
{
    return unit == u'\r' || unit == u'\n';
}

class DelimitedTextReader
{
public:
    DelimitedTextReader(StringView text, char16_t separator, const Limits& limits)
        : text_(text), separator_(separator), mostUnits_(limits.fieldUnits), sheet_(limits)
    {
    }

    Sheet Read()
    {
        ReadSeparatorLine();
        for (std::uint32_t row = 0; at_ < text_.size(); ++row)
            ReadRow(row);
        return std::move(sheet_);
    }

private:
    void ReadSeparatorLine()
    {
        // Exactly one character up to the line's end; anything else is an ordinary row.
        const std::size_t length = separatorLine.size() + 1;
        if (!text_.starts_with(separatorLine) || text_.size() < length || IsLineEnd(text_[length - 1]) ||
            (text_.size() > length && !IsLineEnd(text_[length])))
            return;
        separator_ = text_[length - 1];
        at_ = length;
        TakeLineEnd();
    }

    void ReadRow(std::uint32_t row)
    {
        std::uint32_t column = 0;
        for (;; ++column) {
            const bool isQuoted = at_ < text_.size() && text_[at_] == u'"';
            const Cell value = ValueOfField(isQuoted ? ReadQuotedField() : ReadField(), isQuoted, formula_);
            if (!std::holds_alternative<std::monostate>(value))
                sheet_.Put(row, column, value);
            if (at_ == text_.size() || text_[at_] != separator_)
                break;
            ++at_;
        }
        TakeLineEnd();
    }

    void TakeLineEnd()
    {
        if (text_.substr(at_).starts_with(u"\r\n"))
            ++at_;
        if (at_ < text_.size())
            ++at_;
    }

    // Both give the field at the place, which is then at a separator, a line end or the end.
    StringView ReadField()
    {
        const std::size_t start = at_;
        at_ = EndOfField(at_);
        CheckLength(at_ - start);
        return text_.substr(start, at_ - start);
    }

    StringView ReadQuotedField()
    {
        field_.clear();
        ++at_;
        for (;;) {
            // A field that nothing closes goes on to the end of the text.
            const std::size_t quote = std::min(text_.find(u'"', at_), text_.size());
            CheckLength(field_.size() + (quote - at_));
            field_ += text_.substr(at_, quote - at_);
            at_ = std::min(quote + 1, text_.size());
            if (at_ == text_.size() || text_[at_] != u'"')
                break;
            field_ += u'"';
            ++at_;
        }
        const std::size_t end = EndOfField(at_);  // whatever comes after the closing quote belongs to the field
        CheckLength(field_.size() + (end - at_));
        field_ += text_.substr(at_, end - at_);
        at_ = end;
        return field_;
    }

    /// Before a copy is made.
    void CheckLength(std::size_t units) const
    {
        if (units > mostUnits_)
            throw Refusal("A field of the file is too long");
    }

    std::size_t EndOfField(std::size_t from) const
    {
        while (from < text_.size() && text_[from] != separator_ && !IsLineEnd(text_[from]))
            ++from;
        return from;
    }

    StringView text_;
    char16_t separator_;
    std::size_t mostUnits_;
    std::size_t at_ = 0;
    Sheet sheet_;
    String field_;
    String formula_;
};

void AppendField(std::string& csv, StringView text)
{
    // A first field "sep=;" without quotes would name the separator and be no row.
    const bool needsQuotes = text.find_first_of(u",\"\r\n") != StringView::npos || text.starts_with(separatorLine);
    if (!needsQuotes) {
        csv += ToUtf8(text);
        return;
    }
    csv += '"';
    // Quotes inside are doubled (RFC 4180, 2).
    for (const char unit : ToUtf8(text))
        csv.append(unit == '"' ? 2 : 1, unit);
    csv += '"';
}

struct AppendCell {
    std::string& csv;

    void operator()(std::monostate) const {}
    void operator()(bool value) const { csv += value ? "TRUE" : "FALSE"; }
    void operator()(double value) const { csv += FieldOfNumber(value); }
    void operator()(StringView value) const { AppendField(csv, FieldOfText(value)); }
    void operator()(CellError value) const { csv += NameOfError(value); }
};

}  // namespace

Sheet ReadDelimitedText(StringView text, char16_t separator, const Limits& limits)
{
    return DelimitedTextReader(text, separator, limits).Read();
}

std::string WriteCommaSeparated(const Sheet& sheet)
{
    // By this mark Excel knows UTF-8.
    std::string csv = "\xEF\xBB\xBF";
    const Sheet::Extent used = sheet.UsedRange();
    const std::uint32_t rows = used.firstRow + used.rows;
    const std::uint32_t columns = used.firstColumn + used.columns;
    // Each empty cell is a comma: a lone cell in the last corner would make gigabytes of them.
    if (std::uint64_t{rows} * columns > Limits::Default().cells)
        throw Refusal("The used range is too large to be saved as text");
    // From the first row and column of the sheet, so that cells keep their places.
    for (std::uint32_t row = 0; row < rows; ++row) {
        for (std::uint32_t column = 0; column < columns; ++column) {
            if (column > 0)
                csv += ',';
            std::visit(AppendCell{csv}, sheet.At(row, column));
        }
        csv += "\r\n";
    }
    return csv;
}

}  // namespace tessarine::sheets
