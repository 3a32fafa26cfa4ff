#pragma once

#include <cstddef>

#include "platform/String.h"

/// UTF-16 as units: surrogates, the pairs that they form, and code points (Unicode 3.9, D91).
namespace tessarine
{

/// The first unit of a pair, D800 to DBFF.
constexpr bool IsHighSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

/// The second unit of a pair, DC00 to DFFF.
constexpr bool IsLowSurrogate(char32_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Either of the two. No character has such a number.
constexpr bool IsSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDFFF;
}

/// The code point that a high and a low surrogate stand for together.
constexpr char32_t JoinSurrogates(char16_t high, char16_t low)
{
    // Ten bits from each of the two.
    return 0x10000 + ((char32_t{high} - 0xD800) << 10) + (char32_t{low} - 0xDC00);
}

/// The two surrogates that stand for a code point of U+10000 to U+10FFFF.
constexpr char16_t HighSurrogateOf(char32_t codePoint)
{
    // 0xD7C0 is 0xD800 - (0x10000 >> 10), because pairs begin at U+10000.
    return static_cast<char16_t>(0xD7C0 + (codePoint >> 10));
}

constexpr char16_t LowSurrogateOf(char32_t codePoint)
{
    return static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
}

/// True when the units at `at` and `at + 1` are a pair; false at the last unit and beyond the end.
constexpr bool IsPairAt(StringView text, std::size_t at)
{
    return at + 1 < text.size() && IsHighSurrogate(text[at]) && IsLowSurrogate(text[at + 1]);
}

/// True when a cut in front of the unit at `at` would divide a pair; false at both ends.
constexpr bool DividesPair(StringView text, std::size_t at)
{
    return at > 0 && IsPairAt(text, at - 1);
}

/// The code point that begins at `at`, which is inside the text; a lone surrogate is given as it is.
constexpr char32_t CodePointAt(StringView text, std::size_t at)
{
    return IsPairAt(text, at) ? JoinSurrogates(text[at], text[at + 1]) : text[at];
}

/// The code point that ends in front of `at`, which is at least 1; a lone surrogate is given as it is.
constexpr char32_t CodePointBefore(StringView text, std::size_t at)
{
    return at >= 2 && IsPairAt(text, at - 2) ? JoinSurrogates(text[at - 2], text[at - 1]) : text[at - 1];
}

/// Appends a code point of at most U+10FFFF as one or two units.
constexpr void AppendUtf16(String& text, char32_t codePoint)
{
    // One unit for the characters of the first plane, which nearly all texts consist of.
    if (codePoint < 0x10000) {
        text += static_cast<char16_t>(codePoint);
    } else {
        text += HighSurrogateOf(codePoint);
        text += LowSurrogateOf(codePoint);
    }
}

}  // namespace tessarine
