#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/Utf16.h"

namespace tessarine
{

/// The bytes of one character.
struct Utf8Sequence {
    std::size_t length;  ///< Bytes; 0 when they are not valid UTF-8.
    char32_t codePoint;
};

/// The character that a text of at least one byte begins with.
inline Utf8Sequence DecodeUtf8(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const auto follows = [&](std::size_t i) { return i < text.size() && (byte(i) & 0xC0) == 0x80; };
    const auto bits = [&](std::size_t i) { return static_cast<char32_t>(byte(i) & 0x3F); };

    // Shorter forms than needed, surrogates and values above U+10FFFF are not valid (Unicode, table 3-7).
    const std::uint8_t lead = byte(0);
    if (lead < 0x80)
        return {1, lead};
    if (lead >= 0xC2 && lead <= 0xDF && follows(1))
        return {2, (lead & 0x1Fu) << 6 | bits(1)};
    if ((lead & 0xF0) == 0xE0 && follows(1) && follows(2)) {
        const char32_t codePoint = (lead & 0x0Fu) << 12 | bits(1) << 6 | bits(2);
        if (codePoint >= 0x800 && !IsSurrogate(codePoint))
            return {3, codePoint};
    }
    if (lead >= 0xF0 && lead <= 0xF4 && follows(1) && follows(2) && follows(3)) {
        const char32_t codePoint = (lead & 0x07u) << 18 | bits(1) << 12 | bits(2) << 6 | bits(3);
        if (codePoint >= 0x10000 && codePoint <= 0x10FFFF)
            return {4, codePoint};
    }
    return {0, 0};
}

/// True for a text that is UTF-8 to its end, as one of ASCII alone is. A text of a code page that goes beyond ASCII
/// hardly ever is.
inline bool IsUtf8(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t length = DecodeUtf8(text).length;
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

}  // namespace tessarine
