#pragma once

#include <string_view>
#include <vector>

#include "platform/String.h"

/// XML as a sequence of markup and text with offsets: the ground of comparisons on bytes. UTF-8 only.
namespace tessarine::test
{

struct Token {
    enum class Kind { Start, End, Empty, Text, CData, Other };  ///< Empty is <a/>, Other a comment or an instruction.

    Kind kind = Kind::Text;
    std::string_view bytes;  ///< A view into the part.
    std::string_view name;   ///< Of an element, without its prefix.
};

/// Raises std::runtime_error for markup without an end.
std::vector<Token> TokensOf(std::string_view xml);

/// The index after the element that starts at `start`.
std::size_t EndOfElement(const std::vector<Token>& tokens, std::size_t start);

/// A UTF-16 unit of character data and the bytes that stand for it. The units of a surrogate pair share their bytes.
struct Character {
    char16_t unit = 0;
    std::size_t start = 0;  ///< In the text given, CDATA marks counted.
    std::size_t end = 0;
};

/// Character data as a reader sees it: references, CDATA sections and `_x000B_` decoded, comments left out.
std::vector<Character> CharactersOf(std::string_view xml);
String TextOfCharacters(const std::vector<Character>& characters);

/// The decoded value of an attribute, prefix and all; "" when the tag has none.
String AttributeOf(std::string_view tag, std::string_view name);

/// The tag without the attributes of these names, whatever their prefix.
std::string WithoutAttributes(std::string_view tag, const std::vector<std::string_view>& names);

}  // namespace tessarine::test
