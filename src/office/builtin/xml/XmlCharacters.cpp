#include "office/builtin/xml/XmlCharacters.h"

#include <algorithm>

#include "office/builtin/xml/ByteBlock.h"
#include "platform/Utf16.h"

namespace tessarine::builtin
{

namespace
{

std::optional<char32_t> NumberOf(std::string_view digits)
{
    const bool hexadecimal = digits.starts_with('x');
    if (hexadecimal)
        digits.remove_prefix(1);
    if (digits.empty())
        return std::nullopt;
    const char32_t base = hexadecimal ? 16 : 10;
    char32_t value = 0;
    for (const char c : digits) {
        char32_t digit = base;
        if (c >= '0' && c <= '9')
            digit = static_cast<char32_t>(c - '0');
        else if (c >= 'a' && c <= 'f')
            digit = static_cast<char32_t>(c - 'a' + 10);
        else if (c >= 'A' && c <= 'F')
            digit = static_cast<char32_t>(c - 'A' + 10);
        if (digit >= base || value > 0x10FFFF)
            return std::nullopt;
        value = value * base + digit;
    }
    return value;
}

bool IsXmlCharacter(char32_t c)
{
    if (c < 0x20)
        return c == '\t' || c == '\n' || c == '\r';
    return c <= 0x10FFFF && !IsSurrogate(c) && c != 0xFFFE && c != 0xFFFF;
}

/// The bytes of the character that begins with one beyond ASCII; 0 when they are no UTF-8 or none that XML can hold.
std::size_t LengthOfCharacter(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
    const auto follow = [&](std::size_t count) {
        for (std::size_t i = 1; i <= count; ++i)
            if ((byte(i) & 0xC0) != 0x80)
                return false;
        return true;
    };
    // Unicode, table 3-7: no longer forms than needed, no surrogates, nothing beyond U+10FFFF.
    const unsigned lead = byte(0);
    const unsigned second = byte(1);
    if (lead >= 0xC2 && lead <= 0xDF)
        return follow(1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        const bool isShort = lead == 0xE0 && second < 0xA0;
        const bool isSurrogate = lead == 0xED && second >= 0xA0;
        const bool isNone = lead == 0xEF && second == 0xBF && byte(2) >= 0xBE;  // U+FFFE, U+FFFF
        return follow(2) && !isShort && !isSurrogate && !isNone ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4)
        return follow(3) && (lead != 0xF0 || second >= 0x90) && (lead != 0xF4 || second < 0x90) ? 4 : 0;
    return 0;
}

}  // namespace

std::optional<Reference> ReadReference(std::string_view text)
{
    constexpr std::size_t longest = 32;  // with some leading zeros
    const std::size_t semicolon = text.substr(0, longest).find(';');
    if (semicolon == std::string_view::npos)
        return std::nullopt;
    const std::string_view name = text.substr(1, semicolon - 1);
    std::optional<char32_t> c;
    if (name == "amp")
        c = '&';
    else if (name == "lt")
        c = '<';
    else if (name == "gt")
        c = '>';
    else if (name == "quot")
        c = '"';
    else if (name == "apos")
        c = '\'';
    else if (name.starts_with('#'))
        c = NumberOf(name.substr(1));
    if (!c)
        return std::nullopt;
    return Reference{*c, semicolon + 1};
}

CharacterCheck CheckCharacters(std::string_view xml, std::size_t from, std::size_t to, Ampersands ampersands)
{
    std::size_t at = from;
    while (at < to) {
        if (at + ByteBlock::size <= xml.size()) {
            const ByteBlock bytes(xml.data() + at);
            if ((bytes.NotPrintable() | bytes.Matches('&')).TopBits() == 0) {
                at += ByteBlock::size;
                continue;
            }
        }
        // One by one up to the end of the block, most of whose bytes are plain all the same.
        for (const std::size_t end = std::min(at + ByteBlock::size, to); at < end;) {
            const auto c = static_cast<unsigned char>(xml[at]);
            if (c >= 0x80) {
                const std::size_t length = LengthOfCharacter(xml.substr(at));
                if (length == 0)
                    return {at, "it holds bytes that are no text"};
                at += length;
            } else if (c == '&' && ampersands == Ampersands::BeginReferences) {
                const auto reference = ReadReference(xml.substr(at));
                if (!reference || !IsXmlCharacter(reference->codePoint))
                    return {at, "an \"&\" stands for no character"};
                at += reference->length;
            } else if (c < 0x20 && !IsXmlCharacter(c)) {
                return {at, "it holds a control character"};
            } else {
                ++at;
            }
        }
    }
    return {at};
}

}  // namespace tessarine::builtin
