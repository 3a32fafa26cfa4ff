#include "model/BagText.h"

#include <cstdint>

#include "platform/Utf16.h"

namespace tessarine
{

namespace
{

/// Three bytes with the surrogate's own number, which UTF-8 forbids. AppendUtf8 would put U+FFFD in its place, and a
/// text that holds half a pair would not come back as it was saved.
void AppendSurrogate(std::string& bytes, char16_t unit)
{
    bytes += '\xED';
    bytes += static_cast<char>(0x80 | (unit >> 6 & 0x3F));
    bytes += static_cast<char>(0x80 | (unit & 0x3F));
}

struct Sequence {
    std::size_t length = 0;  // bytes, 0 when they are not a sequence
    char32_t codePoint = 0;
};

/// The first sequence of bytes that are not empty. A surrogate's number counts as a code point here.
Sequence FirstSequence(std::string_view bytes)
{
    const auto lead = static_cast<std::uint8_t>(bytes.front());
    if (lead < 0x80)
        return {1, lead};
    // C0 and C1 could only begin a longer form of an ASCII character, F5 and above only a number beyond the last code
    // point.
    const std::size_t length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if (length == 0 || length > bytes.size())
        return {};
    char32_t codePoint = lead & (0xFFu >> (length + 1));
    for (const char byte : bytes.substr(1, length - 1)) {
        if ((byte & 0xC0) != 0x80)
            return {};
        codePoint = codePoint << 6 | (byte & 0x3F);
    }
    // By length: the smallest code point that needs so many bytes. A character has one form only.
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (codePoint < smallest[length] || codePoint > 0x10FFFF)
        return {};
    return {length, codePoint};
}

}  // namespace

std::string BagTextFrom(StringView text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const char32_t codePoint = CodePointAt(text, at);
        if (IsSurrogate(codePoint))
            AppendSurrogate(bytes, text[at]);
        else
            AppendUtf8(bytes, codePoint);
        at += IsPairAt(text, at) ? 2 : 1;
    }
    return bytes;
}

std::optional<String> TextFromBag(std::string_view bytes)
{
    String text;
    text.reserve(bytes.size());
    bool endsWithLoneHigh = false;
    while (!bytes.empty()) {
        const auto [length, codePoint] = FirstSequence(bytes);
        if (length == 0)
            return std::nullopt;
        bytes.remove_prefix(length);
        // The halves of a pair, written one by one, would be a second form of that character. No writer makes it.
        if (endsWithLoneHigh && IsLowSurrogate(codePoint))
            return std::nullopt;
        endsWithLoneHigh = IsHighSurrogate(codePoint);
        AppendUtf16(text, codePoint);
    }
    return text;
}

}  // namespace tessarine
