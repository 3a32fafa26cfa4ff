#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/String.h"

/// Pieces of lines for people.
namespace tessarine::batch
{

/// "1 file", "2 files". All counts of things go through it, as the words around them go through OneOrMore.
std::string Counted(std::int64_t count, std::string_view noun);

/// The word that goes with a count: "is" or "are", "it" or "them".
std::string_view OneOrMore(std::int64_t count, std::string_view one, std::string_view more);

/// A text on one line: line ends become blanks, other control characters escapes.
std::string OnOneLine(std::string text);

/// A text on one line, with control characters as escapes (platform/VisibleText.h), so that it can't drive a terminal.
std::string Escaped(StringView text);

/// The same in double quotes, as UTF-8 and as UTF-16. A quote inside the text stays as it is.
std::string Quoted(StringView text);
String InQuotes(StringView text);

}  // namespace tessarine::batch
