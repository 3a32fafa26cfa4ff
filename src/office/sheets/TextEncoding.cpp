#include "office/sheets/TextEncoding.h"

#include "platform/CodePage.h"
#include "platform/Utf8.h"

namespace tessarine::sheets
{

namespace
{

String FromUtf16(std::string_view bytes, std::size_t lowByte)
{
    String text;
    text.reserve(bytes.size() / 2 + 1);
    const auto byte = [&](std::size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(bytes[i])); };
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        text += static_cast<char16_t>(byte(i + lowByte) | byte(i + 1 - lowByte) << 8);
    if (bytes.size() % 2 != 0)
        text += u'\xFFFD';
    return text;
}

}  // namespace

String DecodeText(std::string_view bytes)
{
    if (bytes.starts_with("\xEF\xBB\xBF"))
        return FromUtf8(bytes.substr(3));
    if (bytes.starts_with("\xFF\xFE"))
        return FromUtf16(bytes.substr(2), 0);
    if (bytes.starts_with("\xFE\xFF"))
        return FromUtf16(bytes.substr(2), 1);
    return IsUtf8(bytes) ? FromUtf8(bytes) : FromCodePage(bytes, SystemCodePage());
}

}  // namespace tessarine::sheets
