#include "office/builtin/xml/XmlEncoding.h"

#include <algorithm>
#include <cstdint>

#include "office/builtin/limits/Damage.h"
#include "platform/String.h"
#include "platform/Utf16.h"

namespace tessarine::builtin
{

namespace
{

bool DeclaresOtherEncoding(std::string_view bytes)
{
    if (!bytes.starts_with("<?xml"))
        return false;
    if (bytes.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\""))
        return false;  // which nearly all say
    const std::string_view declaration = bytes.substr(0, bytes.find("?>"));
    const std::size_t attribute = declaration.find("encoding");
    const std::size_t open =
        attribute == std::string_view::npos ? attribute : declaration.find_first_of("\"'", attribute);
    if (open == std::string_view::npos)
        return false;
    std::string name(declaration.substr(open + 1, declaration.find(declaration[open], open + 1) - open - 1));
    std::ranges::transform(name, name.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return name != "utf-8" && name != "utf8";
}

std::string WithReferences(std::string_view utf8)
{
    const String units = FromUtf8(utf8);
    std::string bytes;
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char32_t codePoint = CodePointAt(units, i);
        if (codePoint < 0x80) {
            bytes += static_cast<char>(codePoint);
            continue;
        }
        if (codePoint >= 0x10000)
            ++i;
        bytes += "&#" + std::to_string(static_cast<std::uint32_t>(codePoint)) + ";";
    }
    return bytes;
}

}  // namespace

XmlEncoding EncodingOf(std::string_view bytes, std::string_view part)
{
    const auto starts = [&](std::string_view mark) { return bytes.starts_with(mark); };
    if (starts("\xFF\xFE") || starts(std::string_view("<\0", 2)))
        return XmlEncoding::Utf16LittleEndian;
    if (starts("\xFE\xFF") || starts(std::string_view("\0<", 2)))
        return XmlEncoding::Utf16BigEndian;
    if (!DeclaresOtherEncoding(bytes))
        return XmlEncoding::Utf8;
    if (std::ranges::any_of(bytes, [](char c) { return static_cast<unsigned char>(c) >= 0x80; }))
        throw Damage(part, "its encoding is neither UTF-8 nor UTF-16");
    return XmlEncoding::Ascii;
}

std::string DecodeXml(std::string_view bytes, XmlEncoding encoding, std::string_view part)
{
    if (encoding == XmlEncoding::Utf8 || encoding == XmlEncoding::Ascii)
        return std::string(bytes);
    if (bytes.size() % 2 != 0)
        throw Damage(part, "its UTF-16 text is cut");
    String units(bytes.size() / 2, u'\0');
    const std::size_t high = encoding == XmlEncoding::Utf16BigEndian ? 0 : 1;
    for (std::size_t i = 0; i < units.size(); ++i)
        units[i] = static_cast<char16_t>(static_cast<unsigned char>(bytes[2 * i + high]) << 8 |
                                         static_cast<unsigned char>(bytes[2 * i + 1 - high]));
    std::string utf8 = ToUtf8(units);
    // Half a surrogate pair that does not come back from UTF-8 would change bytes that nobody edits.
    if (FromUtf8(utf8) != units)
        throw Damage(part, "its UTF-16 text holds half a character");
    return utf8;
}

std::string EncodeXml(std::string_view utf8, XmlEncoding encoding)
{
    if (encoding == XmlEncoding::Utf8)
        return std::string(utf8);
    if (encoding == XmlEncoding::Ascii)
        return WithReferences(utf8);
    const String units = FromUtf8(utf8);
    std::string bytes(units.size() * 2, '\0');
    const std::size_t high = encoding == XmlEncoding::Utf16BigEndian ? 0 : 1;
    for (std::size_t i = 0; i < units.size(); ++i) {
        bytes[2 * i + high] = static_cast<char>(units[i] >> 8);
        bytes[2 * i + 1 - high] = static_cast<char>(units[i] & 0xFF);
    }
    return bytes;
}

}  // namespace tessarine::builtin
