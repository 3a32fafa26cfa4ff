#include <algorithm>
#include <utility>

#include "batch/Locations.h"
#include "batch/PairFormats.h"
#include "batch/Refusal.h"
#include "platform/Utf16.h"

namespace tessarine::batch
{

namespace
{

std::string LineName(std::int64_t line)
{
    return "line " + std::to_string(line);
}

String FromUtf16(std::string_view bytes, std::size_t lowByte)
{
    if (bytes.size() % 2 != 0)
        Refuse("the text is not valid UTF-16: half a character is missing at its end");
    String text;
    text.reserve(bytes.size() / 2);
    const auto byte = [&](std::size_t at) { return static_cast<unsigned>(static_cast<unsigned char>(bytes[at])); };
    for (std::size_t at = 0; at < bytes.size(); at += 2)
        text += static_cast<char16_t>(byte(at + lowByte) | byte(at + 1 - lowByte) << 8);
    return text;
}

bool IsLineEnd(char16_t unit)
{
    return unit == u'\r' || unit == u'\n';
}

/// Where a line ends that begins or goes on at a place, without its line end.
std::size_t EndOfLine(StringView text, std::size_t at)
{
    return std::min(text.find_first_of(u"\r\n", at), text.size());
}

/// Walks over the rows of a text.
class RowReader
{
public:
    RowReader(StringView text, char16_t separator) : text_(text), separator_(separator)
    {
        constexpr StringView separatorLine = u"sep=";
        // Exactly one character up to the line's end; anything else is a row.
        if (text_.starts_with(separatorLine) && EndOfLine(text_, 0) == separatorLine.size() + 1) {
            separator_ = text_[separatorLine.size()];
            at_ = separatorLine.size() + 1;
            TakeLineEnd();
        }
    }

    /// False when there is none any more.
    bool Next(PairRow& row)
    {
        while (at_ < text_.size() && IsLineEnd(text_[at_]))
            TakeLineEnd();
        if (at_ == text_.size())
            return false;
        row = {LineName(line_), {}};
        for (;; ++at_) {
            row.fields.push_back(text_.substr(at_).starts_with(u'"') ? QuotedField() : Field());
            if (at_ == text_.size() || text_[at_] != separator_)
                break;
        }
        TakeLineEnd();
        return true;
    }

private:
    void TakeLineEnd()
    {
        if (at_ == text_.size())
            return;
        at_ += text_.substr(at_).starts_with(u"\r\n") ? 2 : 1;
        ++line_;
    }

    // Both give the field at the place, which is then at a separator, a line end or the end.
    String Field()
    {
        const std::size_t start = at_;
        while (at_ < text_.size() && text_[at_] != separator_ && !IsLineEnd(text_[at_]))
            ++at_;
        return String(text_.substr(start, at_ - start));
    }

    String QuotedField()
    {
        const std::int64_t begun = line_;
        String field;
        for (++at_;;) {
            if (at_ == text_.size())
                Refuse(LineName(begun) + ": a quote begins a field here that no other quote ends");
            if (text_[at_] == u'"') {
                if (++at_ == text_.size() || text_[at_] != u'"')
                    break;
                field += text_[at_++];
            } else if (IsLineEnd(text_[at_])) {
                const std::size_t start = at_;
                TakeLineEnd();
                field += text_.substr(start, at_ - start);
            } else {
                field += text_[at_++];
            }
        }
        if (at_ < text_.size() && text_[at_] != separator_ && !IsLineEnd(text_[at_]))
            Refuse(LineName(line_) +
                   ": there is text after the quote that ends a field (a quote in a field is doubled)");
        return field;
    }

    StringView text_;
    char16_t separator_;
    std::size_t at_ = 0;
    std::int64_t line_ = 1;
};

void AppendField(std::string& text, StringView field, bool isFirst)
{
    text += isFirst ? "" : "\t";
    if (field.find_first_of(u"\t\r\n") == StringView::npos && !field.starts_with(u'"')) {
        text += ToUtf8(field);
        return;
    }
    text += '"';
    for (const char unit : ToUtf8(field))
        text.append(unit == '"' ? 2 : 1, unit);
    text += '"';
}

}  // namespace

String DecodePairFile(std::string_view bytes)
{
    String text;
    if (bytes.starts_with("\xFF\xFE"))
        text = FromUtf16(bytes.substr(2), 0);
    else if (bytes.starts_with("\xFE\xFF"))
        text = FromUtf16(bytes.substr(2), 1);
    else
        text = FromUtf8(bytes.starts_with("\xEF\xBB\xBF") ? bytes.substr(3) : bytes);
    // Line by line, so that the refusal tells which one it is.
    std::int64_t line = 1;
    for (std::size_t at = 0; at < text.size(); ++line) {
        const std::size_t end = EndOfLine(text, at);
        for (std::size_t unit = at; unit < end; unit += IsPairAt(text, unit) ? 2 : 1)
            if (IsSurrogate(CodePointAt(text, unit)))
                Refuse(LineName(line) + ": the text is not valid UTF-8 (or UTF-16 with a byte order mark)");
        CheckPairText(StringView(text).substr(at, end - at), LineName(line));
        at = end + (StringView(text).substr(end).starts_with(u"\r\n") ? 2 : 1);
    }
    return text;
}

std::vector<FilePair> ReadSeparatedPairs(StringView text, char16_t separator)
{
    PairTable table;
    RowReader reader(text, separator);
    for (PairRow row; reader.Next(row);)
        table.Add(row);
    return table.Take();
}

std::string WriteTabSeparatedPairs(const std::vector<FilePair>& pairs)
{
    std::string text = "find\twith\tcase\tword\tin\n";
    for (const FilePair& pair : pairs) {
        AppendField(text, pair.find, true);
        AppendField(text, pair.with.value_or(String()), false);
        text += pair.setting.MatchCase ? "\tTRUE" : "\tFALSE";
        text += pair.setting.MatchWholeWord ? "\tTRUE\t" : "\tFALSE\t";
        bool isFirst = true;
        for (const std::string& name : LocationsOf(pair.setting))
            text += (std::exchange(isFirst, false) ? "" : ",") + name;
        text += '\n';
    }
    return text;
}

}  // namespace tessarine::batch
