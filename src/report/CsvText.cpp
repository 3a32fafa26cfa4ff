#include "report/CsvText.h"

#include "platform/Utf16.h"
#include "report/CleanText.h"

namespace tessarine
{

namespace
{

/// The signs that begin a formula, plain and as wide forms.
bool BeginsFormula(char32_t character)
{
    return StringView(u"=+-@\uFF1D\uFF0B\uFF0D\uFF20").find(static_cast<char16_t>(character)) != StringView::npos &&
           character < 0x10000;
}

/// What readers of cells may pass over in front of a formula: blanks of all kinds, marks that nobody sees, and quotes,
/// which a reader with another separator takes for those of a field.
bool IsPassedOver(char32_t character)
{
    return character <= U' ' || character == U'"' || character == U'\xA0' || character == U'\x1680' ||
           (character >= 0x2000 && character <= 0x200F) || (character >= 0x2028 && character <= 0x202F) ||
           (character >= 0x205F && character <= 0x206F) || character == U'\x3000' || character == U'\xFEFF';
}

/// Whether a cell that began at `at` would hold a formula.
bool IsFormulaAt(StringView text, std::size_t at)
{
    while (at < text.size() && IsPassedOver(text[at]))
        ++at;
    return at < text.size() && BeginsFormula(text[at]);
}

}  // namespace

std::string CsvField(StringView text)
{
    std::string field = "\"";
    field.reserve(text.size() + 2);
    bool mayBeginCell = true;
    for (std::size_t at = 0; at < text.size(); at += IsPairAt(text, at) ? 2 : 1) {
        if (mayBeginCell && IsFormulaAt(text, at))
            field += '\'';
        const char32_t codePoint = CodePointAt(text, at);
        mayBeginCell = codePoint == U';';
        if (codePoint == U'"')
            field += '"';
        AppendUtf8(field, CleanCharacter(codePoint));
    }
    field += '"';
    return field;
}

}  // namespace tessarine
