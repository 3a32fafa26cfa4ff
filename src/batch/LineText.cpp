#include "batch/LineText.h"

#include <algorithm>

#include <fmt/format.h>

namespace tessarine::batch
{

std::string Counted(std::int64_t count, std::string_view noun)
{
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string OnOneLine(std::string text)
{
    std::ranges::replace_if(
        text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return text;
}

std::string Escaped(StringView text)
{
    std::string escaped;
    for (const char character : ToUtf8(text)) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '\n')
            escaped += "\\n";
        else if (character == '\r')
            escaped += "\\r";
        else if (character == '\t')
            escaped += "\\t";
        // Bytes of longer characters are 80 and above and stay as they are.
        else if (byte < 0x20 || byte == 0x7F)
            escaped += fmt::format("\\x{:02X}", byte);
        else
            escaped += character;
    }
    return escaped;
}

std::string Quoted(StringView text)
{
    // A quote inside is left alone: the text is for people, who see where it ends.
    return '"' + Escaped(text) + '"';
}

String InQuotes(StringView text)
{
    return FromUtf8(Quoted(text));
}

}  // namespace tessarine::batch
