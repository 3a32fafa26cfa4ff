#pragma once

namespace tessarine
{

/// The character that stands for a code point of a text in a report, where each text has one line: line ends of any
/// kind (a vertical tab is one in presentations) become U+23CE "⏎", a tab a blank, other control characters their
/// pictures (U+2400 to U+2421). What no text may hold (lone surrogates, noncharacters, U+0080 to U+009F) becomes
/// U+FFFD.
constexpr char32_t CleanCharacter(char32_t codePoint)
{
    switch (codePoint) {
        case U'\t':
            return U' ';
        case U'\n':
        case U'\v':
        case U'\r':
        case U'\x85':
        case U'\x2028':
        case U'\x2029':
            return U'\x23CE';
        case U'\x7F':
            return U'\x2421';
        default:
            break;
    }
    if (codePoint < 0x20)
        return 0x2400 + codePoint;
    const bool isControl = codePoint >= 0x80 && codePoint < 0xA0;
    const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    // The last two of each plane, and 32 in a row (Unicode 23.7).
    const bool isNoncharacter = (codePoint & 0xFFFE) == 0xFFFE || (codePoint >= 0xFDD0 && codePoint <= 0xFDEF);
    return isControl || isSurrogate || isNoncharacter ? U'\xFFFD' : codePoint;
}

}  // namespace tessarine
