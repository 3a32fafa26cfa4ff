#include "platform/String.h"

#include <cstdint>

#include "platform/Utf16.h"
#include "platform/Utf8.h"

namespace tessarine
{

namespace
{

constexpr char32_t replacementCharacter = 0xFFFD;

/// What is added to a byte that is not part of valid UTF-8, 80 to FF. The sum is a lone low surrogate, which no valid
/// text holds.
constexpr char16_t foreignBytes = 0xDC00;

}  // namespace

String FromUtf8(std::string_view text)
{
    // Never more units than bytes.
    String result;
    result.reserve(text.size());
    while (!text.empty()) {
        const Utf8Sequence sequence = DecodeUtf8(text);
        if (sequence.length == 0) {
            result += static_cast<char16_t>(foreignBytes + static_cast<std::uint8_t>(text.front()));
            text.remove_prefix(1);
            continue;
        }
        AppendUtf16(result, sequence.codePoint);
        text.remove_prefix(sequence.length);
    }
    return result;
}

void AppendUtf8(std::string& text, char32_t codePoint)
{
    if (codePoint > 0x10FFFF || IsSurrogate(codePoint))
        codePoint = replacementCharacter;
    const auto put = [&](char32_t byte) { text += static_cast<char>(byte); };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0 | codePoint >> 6);
        put(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        put(0xE0 | codePoint >> 12);
        put(0x80 | (codePoint >> 6 & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    } else {
        put(0xF0 | codePoint >> 18);
        put(0x80 | (codePoint >> 12 & 0x3F));
        put(0x80 | (codePoint >> 6 & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    }
}

std::string ToUtf8(StringView text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit < 0x80) {
            // Most of all texts, which the general way takes several times as long for.
            result += static_cast<char>(unit);
        } else if (IsPairAt(text, i)) {
            AppendUtf8(result, JoinSurrogates(unit, text[i + 1]));
            ++i;
        } else if (unit >= foreignBytes + 0x80 && unit <= foreignBytes + 0xFF) {
            result += static_cast<char>(unit - foreignBytes);
        } else {
            AppendUtf8(result, unit);
        }
    }
    return result;
}

String Trim(StringView text)
{
    // Spaces alone, as the platform's own Trim: tabs and line ends are part of a text.
    const std::size_t begin = text.find_first_not_of(u' ');
    return begin == StringView::npos ? String() : String(text.substr(begin, text.find_last_not_of(u' ') + 1 - begin));
}

}  // namespace tessarine
