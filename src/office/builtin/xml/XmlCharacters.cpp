#include "office/builtin/xml/XmlCharacters.h"

#include <algorithm>
#include <bit>
#include <cstdint>

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

constexpr std::size_t longestCharacter = 4;

/// How many bytes of a block, from its first on, are whole characters that XML can hold, as far as a look at all bytes
/// together tells. The first byte begins a character. `odd` has a bit for each byte to stop at.
std::size_t WholeCharacters(const ByteBlock& bytes, std::uint32_t odd)
{
    const std::uint32_t beyondAscii = bytes.TopBits();
    if (const std::uint32_t controls = bytes.LessThan(' ').TopBits() & ~beyondAscii; controls != 0)
        odd |= controls & ~(bytes.Matches('\n') | bytes.Matches('\r') | bytes.Matches('\t')).TopBits();

    const std::uint32_t following = bytes.LessThan('\xC0').TopBits() & beyondAscii;
    const std::uint32_t leads = beyondAscii & ~following;
    const std::uint32_t leadsOfThree = leads & ~bytes.LessThan('\xE0').TopBits();
    // Those below are for shorter forms than needed, those beyond for characters of four bytes or none.
    odd |= leads & (bytes.LessThan('\xC2').TopBits() | ~bytes.LessThan('\xF0').TopBits());

    std::uint32_t wrong = following ^ (leads << 1 | leadsOfThree << 2);
    const ByteBlock special[]{bytes.Matches('\xE0'), bytes.Matches('\xED'), bytes.Matches('\xEF')};
    if ((special[0] | special[1] | special[2]).TopBits() != 0) {
        const std::uint32_t below = bytes.LessThan('\xA0').TopBits();
        wrong |= following & below & special[0].TopBits() << 1;                // a shorter form than needed
        wrong |= following & ~below & special[1].TopBits() << 1;               // a surrogate
        wrong |= bytes.Matches('\xBF').TopBits() & special[2].TopBits() << 1;  // perhaps U+FFFE or U+FFFF
    }
    if ((wrong | odd) == 0)
        return ByteBlock::size;
    const auto first = static_cast<std::size_t>(std::countr_zero(wrong | odd));
    const std::uint32_t leadsBefore = leads & ((std::uint32_t{1} << first) - 1);
    // What is wrong with a byte that follows a lead, or is missing after the block, is wrong with that character.
    if ((wrong >> first & 1) == 0 || leadsBefore == 0)
        return first;
    return static_cast<std::size_t>(std::bit_width(leadsBefore)) - 1;
}

/// The end of whole blocks of printable ASCII, as nearly all of a part is, without an "&" if those count.
std::size_t EndOfPlainBlocks(std::string_view xml, std::size_t at, bool stopsAtAmpersands)
{
    constexpr std::size_t blocks = 4;  // looked at together
    for (; at + blocks * ByteBlock::size <= xml.size(); at += blocks * ByteBlock::size) {
        const auto oddOf = [&](std::size_t block) {
            const ByteBlock bytes(xml.data() + at + block * ByteBlock::size);
            return stopsAtAmpersands ? bytes.LessThan(' ') | bytes.Matches('&') : bytes.LessThan(' ');
        };
        if ((oddOf(0) | oddOf(1) | oddOf(2) | oddOf(3)).TopBits() != 0)
            break;
    }
    return at;
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

CharacterCheck CheckCharacter(std::string_view xml, std::size_t at, Ampersands ampersands)
{
    const auto c = static_cast<unsigned char>(xml[at]);
    if (c >= 0x80) {
        const std::size_t length = LengthOfCharacter(xml.substr(at));
        return length == 0 ? CharacterCheck{at, "it holds bytes that are no text"} : CharacterCheck{at + length};
    }
    if (c == '&' && ampersands == Ampersands::BeginReferences) {
        const auto reference = ReadReference(xml.substr(at));
        if (!reference || !IsXmlCharacter(reference->codePoint))
            return {at, "an \"&\" stands for no character"};
        return {at + reference->length};
    }
    if (!IsXmlCharacter(c))
        return {at, "it holds a control character"};
    return {at + 1};
}

CharacterCheck CheckCharacters(std::string_view xml, std::size_t from, std::size_t to, Ampersands ampersands)
{
    const bool stopsAtAmpersands = ampersands == Ampersands::BeginReferences;
    CharacterCheck last{from};
    while (last.end < to && last.fault == nullptr) {
        last.end = EndOfPlainBlocks(xml.substr(0, to), last.end, stopsAtAmpersands);
        if (last.end == to)
            break;
        if (last.end + ByteBlock::size <= xml.size()) {
            const ByteBlock bytes(xml.data() + last.end);
            const std::uint32_t stops = stopsAtAmpersands ? bytes.Matches('&').TopBits() : 0;
            const bool isPlain = (stops | bytes.LessThan(' ').TopBits()) == 0;
            const std::size_t whole = isPlain ? ByteBlock::size : WholeCharacters(bytes, stops);
            last.end += whole;
            // One that begins later may have its end after the block.
            if (whole > ByteBlock::size - longestCharacter || last.end >= to)
                continue;
        }
        last = CheckCharacter(xml, last.end, ampersands);
    }
    return last;
}

}  // namespace tessarine::builtin
