#include "support/MarkupTokens.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <string>

namespace tessarine::test
{
namespace
{

constexpr std::string_view Blanks = " \t\r\n";

/// The offset after the next mark. Raises when there is none.
std::size_t IndexAfter(std::string_view xml, std::string_view mark, std::size_t from)
{
    const std::size_t at = xml.find(mark, from);
    if (at == std::string_view::npos)
        throw std::runtime_error("markup without an end at " + std::to_string(from));
    return at + mark.size();
}

std::size_t EndOfTag(std::string_view xml, std::size_t start)
{
    for (std::size_t at = start; at < xml.size(); ++at) {
        if (xml[at] == '>')
            return at + 1;
        if (xml[at] == '"' || xml[at] == '\'')
            at = IndexAfter(xml, xml.substr(at, 1), at + 1) - 1;
    }
    throw std::runtime_error("tag without an end at " + std::to_string(start));
}

std::string_view NameOf(std::string_view tag)
{
    const std::size_t start = tag[1] == '/' ? 2 : 1;
    const std::string_view name = tag.substr(start, tag.find_first_of(" \t\r\n/>", start) - start);
    return name.substr(name.find(':') + 1);
}

/// One code point of character data at `at`; gives the offset after it.
std::size_t ReadCodePoint(std::string_view xml, std::size_t at, bool inCData, String& units)
{
    if (xml[at] != '&' || inCData) {
        std::size_t size = 1;
        while (at + size < xml.size() && (static_cast<unsigned char>(xml[at + size]) & 0xC0) == 0x80)
            ++size;
        units = FromUtf8(xml.substr(at, size));
        return at + size;
    }
    const std::size_t end = IndexAfter(xml, ";", at);
    const std::string_view name = xml.substr(at + 1, end - at - 2);
    if (name.starts_with('#')) {
        const bool hexadecimal = name.size() > 1 && name[1] == 'x';
        std::uint32_t codePoint = 0;
        std::from_chars(name.data() + (hexadecimal ? 2 : 1), name.data() + name.size(), codePoint,
                        hexadecimal ? 16 : 10);
        std::string utf8;
        AppendUtf8(utf8, codePoint);
        units = FromUtf8(utf8);
    } else {
        units = name == "amp"    ? u"&"
                : name == "lt"   ? u"<"
                : name == "gt"   ? u">"
                : name == "quot" ? u"\""
                : name == "apos" ? u"'"
                                 : u"?";
    }
    return end;
}

int HexDigit(char16_t unit)
{
    static constexpr std::u16string_view upper = u"0123456789ABCDEF";
    static constexpr std::u16string_view lower = u"0123456789abcdef";
    const std::size_t at = std::min(upper.find(unit), lower.find(unit));
    return at == std::u16string_view::npos ? -1 : static_cast<int>(at);
}

/// Folds the seven units of `_x000B_` into the control character that they stand for.
void FoldEscapes(std::vector<Character>& characters)
{
    constexpr std::size_t EscapeLength = 7;
    for (std::size_t i = 0; i + EscapeLength <= characters.size(); ++i) {
        if (characters[i].unit != u'_')
            continue;
        String escape;
        for (std::size_t j = 0; j < EscapeLength; ++j)
            escape += characters[i + j].unit;
        const int value = HexDigit(escape[4]) * 16 + HexDigit(escape[5]);
        if (!escape.starts_with(u"_x00") || !escape.ends_with(u'_') || HexDigit(escape[4]) < 0 ||
            HexDigit(escape[5]) < 0 || value >= 0x20)
            continue;
        characters[i].unit = static_cast<char16_t>(value);
        characters[i].end = characters[i + EscapeLength - 1].end;
        const auto next = characters.begin() + static_cast<std::ptrdiff_t>(i) + 1;
        characters.erase(next, next + (EscapeLength - 1));
    }
}

/// Calls `visit(name, start, end, value)` for each attribute; the range takes in the blanks in front of it.
template <class Visitor>
void ForEachAttribute(std::string_view tag, const Visitor& visit)
{
    std::size_t at = tag.find_first_of(Blanks);
    while (at < tag.size()) {
        const std::size_t nameStart = tag.find_first_not_of(Blanks, at);
        const std::size_t equals = tag.find('=', nameStart);
        if (equals == std::string_view::npos)
            return;
        const std::size_t quote = tag.find_first_of("\"'", equals);
        const std::size_t end = IndexAfter(tag, tag.substr(quote, 1), quote + 1);
        std::string_view name = tag.substr(nameStart, equals - nameStart);
        name = name.substr(0, name.find_last_not_of(Blanks) + 1);
        visit(name, at, end, tag.substr(quote + 1, end - quote - 2));
        at = end;
    }
}

}  // namespace

std::vector<Token> TokensOf(std::string_view xml)
{
    std::vector<Token> tokens;
    for (std::size_t at = 0; at < xml.size();) {
        Token token;
        std::size_t end = xml.size();
        const std::string_view rest = xml.substr(at);
        if (!rest.starts_with('<')) {
            end = std::min(xml.find('<', at), xml.size());
        } else if (rest.starts_with("<![CDATA[")) {
            token.kind = Token::Kind::CData;
            end = IndexAfter(xml, "]]>", at);
        } else if (rest.starts_with("<!--") || rest.starts_with("<?") || rest.starts_with("<!")) {
            token.kind = Token::Kind::Other;
            end = IndexAfter(xml, rest.starts_with("<!--") ? "-->" : rest.starts_with("<?") ? "?>" : ">", at);
        } else {
            end = EndOfTag(xml, at);
            token.kind = rest[1] == '/'        ? Token::Kind::End
                         : xml[end - 2] == '/' ? Token::Kind::Empty
                                               : Token::Kind::Start;
            token.name = NameOf(rest);
        }
        token.bytes = xml.substr(at, end - at);
        tokens.push_back(token);
        at = end;
    }
    return tokens;
}

std::size_t EndOfElement(const std::vector<Token>& tokens, std::size_t start)
{
    std::size_t depth = 0;
    for (std::size_t i = start; i < tokens.size(); ++i) {
        if (tokens[i].kind == Token::Kind::Start)
            ++depth;
        else if (tokens[i].kind == Token::Kind::End)
            --depth;
        if (depth == 0)
            return i + 1;
    }
    throw std::runtime_error("element without an end: " + std::string(tokens[start].bytes));
}

std::vector<Character> CharactersOf(std::string_view xml)
{
    std::vector<Character> characters;
    std::size_t offset = 0;
    for (const Token& token : TokensOf(xml)) {
        const bool inCData = token.kind == Token::Kind::CData;
        if (inCData || token.kind == Token::Kind::Text) {
            const std::size_t last = offset + token.bytes.size() - (inCData ? 3 : 0);
            for (std::size_t at = offset + (inCData ? 9 : 0); at < last;) {
                String units;
                const std::size_t end = ReadCodePoint(xml, at, inCData, units);
                for (const char16_t unit : units)
                    characters.push_back({unit, at, end});
                at = end;
            }
        }
        offset += token.bytes.size();
    }
    FoldEscapes(characters);
    return characters;
}

String TextOfCharacters(const std::vector<Character>& characters)
{
    String text;
    for (const Character& character : characters)
        text += character.unit;
    return text;
}

String AttributeOf(std::string_view tag, std::string_view wanted)
{
    String value;
    ForEachAttribute(tag, [&](std::string_view name, std::size_t, std::size_t, std::string_view raw) {
        if (name == wanted)
            value = TextOfCharacters(CharactersOf(raw));
    });
    return value;
}

std::string WithoutAttributes(std::string_view tag, const std::vector<std::string_view>& names)
{
    std::string rest;
    std::size_t kept = 0;
    ForEachAttribute(tag, [&](std::string_view name, std::size_t start, std::size_t end, std::string_view) {
        if (std::ranges::find(names, name.substr(name.find(':') + 1)) == names.end())
            return;
        rest += tag.substr(kept, start - kept);
        kept = end;
    });
    return rest + std::string(tag.substr(kept));
}

}  // namespace tessarine::test
