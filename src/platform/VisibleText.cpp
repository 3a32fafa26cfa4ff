#include "platform/VisibleText.h"

#include <cstddef>

#include "platform/Utf16.h"

namespace tessarine
{

namespace
{

constexpr StringView digits = u"0123456789ABCDEF";

/// The lone surrogates that stand for bytes 80 to 9F of a name, which are control characters in some code pages.
bool IsForeignControl(char16_t unit)
{
    return unit >= 0xDC80 && unit <= 0xDC9F;
}

bool TurnsOrEndsLines(char16_t unit)
{
    // The marks ALM, LRM and RLM, then the separators with the embeddings and overrides, then the isolates.
    return unit == 0x061C || unit == 0x200E || unit == 0x200F || (unit >= 0x2028 && unit <= 0x202E) ||
           (unit >= 0x2066 && unit <= 0x2069);
}

bool IsControl(char16_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F) || TurnsOrEndsLines(unit);
}

void AppendHex(String& text, unsigned value, int count)
{
    for (int shift = 4 * (count - 1); shift >= 0; shift -= 4)
        text += digits[(value >> shift) & 0xF];
}

void AppendEscape(String& text, char16_t unit)
{
    text += u'\\';
    switch (unit) {
        case u'\n':
            text += u'n';
            return;
        case u'\r':
            text += u'r';
            return;
        case u'\t':
            text += u't';
            return;
        default:
            break;
    }
    const bool isByte = unit < 0x80 || IsForeignControl(unit);
    text += isByte ? u'x' : u'u';
    // The low half of such a surrogate is the byte itself.
    AppendHex(text, isByte ? unit & 0xFFu : unit, isByte ? 2 : 4);
}

}  // namespace

String VisibleText(StringView text)
{
    String visible;
    visible.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        // The second half of a pair may have the number of a foreign byte, and is none.
        const bool isInPair = i > 0 && IsHighSurrogate(text[i - 1]);
        if (IsControl(unit) || (IsForeignControl(unit) && !isInPair))
            AppendEscape(visible, unit);
        else
            visible += unit;
    }
    return visible;
}

}  // namespace tessarine
