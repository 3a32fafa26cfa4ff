#include "batch/LineText.h"

#include <algorithm>

#include <fmt/format.h>

#include "platform/VisibleText.h"

namespace tessarine::batch
{

std::string Counted(std::int64_t count, std::string_view noun)
{
    return fmt::format("{} {}{}", count, noun, OneOrMore(count, "", "s"));
}

std::string_view OneOrMore(std::int64_t count, std::string_view one, std::string_view more)
{
    return count == 1 ? one : more;
}

std::string OnOneLine(std::string text)
{
    std::ranges::replace_if(
        text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return Escaped(FromUtf8(text));
}

std::string Escaped(StringView text)
{
    return ToUtf8(VisibleText(text));
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
