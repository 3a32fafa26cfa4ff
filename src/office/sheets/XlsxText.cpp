#include "office/sheets/XlsxText.h"

#include <optional>

#include "office/builtin/xml/XmlText.h"
#include "platform/Utf16.h"

namespace tessarine::sheets
{

namespace
{

constexpr std::size_t escapeLength = 7;  // "_xHHHH_"

/// The unit of "xHHHH" after an underscore; nothing for another text.
std::optional<char16_t> CodeAt(StringView text, std::size_t at)
{
    if (at + 5 > text.size() || text[at] != u'x')
        return std::nullopt;
    unsigned code = 0;
    for (const char16_t digit : text.substr(at + 1, 4)) {
        if (digit >= u'0' && digit <= u'9')
            code = code * 16 + (digit - u'0');
        else if (digit >= u'A' && digit <= u'F')
            code = code * 16 + (digit - u'A' + 10);
        else if (digit >= u'a' && digit <= u'f')
            code = code * 16 + (digit - u'a' + 10);
        else
            return std::nullopt;
    }
    return static_cast<char16_t>(code);
}

std::optional<char16_t> EscapeAt(StringView text, std::size_t at)
{
    if (at + escapeLength > text.size() || text[at] != u'_' || text[at + escapeLength - 1] != u'_')
        return std::nullopt;
    return CodeAt(text, at + 1);
}

/// Whether the unit is written as an escape: XML can't hold it, or reads it as something else.
bool NeedsEscape(StringView text, std::size_t at)
{
    const char16_t unit = text[at];
    if (unit < 0x20)
        return unit != u'\t' && unit != u'\n';
    if (IsSurrogate(unit))
        return !IsPairAt(text, at) && !(at > 0 && IsPairAt(text, at - 1));
    return unit >= 0xFFFE;
}

/// Whether the underscore here would begin an escape in what is written. An escape that follows gives the last
/// underscore of it.
bool LooksLikeEscape(StringView text, std::size_t at)
{
    const std::size_t last = at + escapeLength - 1;
    return text[at] == u'_' && last < text.size() && (text[last] == u'_' || NeedsEscape(text, last)) &&
           CodeAt(text, at + 1);
}

void AppendEscape(String& text, char16_t unit)
{
    constexpr StringView digits = u"0123456789ABCDEF";
    text += u"_x";
    for (int shift = 12; shift >= 0; shift -= 4)
        text += digits[unit >> shift & 0xF];
    text += u'_';
}

}  // namespace

void JoinEscapes(String& text)
{
    std::size_t to = text.find(u"_x");
    if (to == String::npos)
        return;
    for (std::size_t from = to; from < text.size();) {
        const auto unit = EscapeAt(text, from);
        text[to++] = unit ? *unit : text[from];
        from += unit ? escapeLength : 1;
    }
    text.resize(to);
}

std::string EscapeCellText(StringView text)
{
    String escaped;
    escaped.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (NeedsEscape(text, at) || LooksLikeEscape(text, at))
            AppendEscape(escaped, text[at]);
        else
            escaped += text[at];
    }
    return builtin::EscapeText(escaped);
}

}  // namespace tessarine::sheets
