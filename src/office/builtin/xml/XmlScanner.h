#pragma once

#include <array>
#include <cstddef>
#include <string_view>

/// Where elements and attributes stand in the bytes of a part, or of a piece of one. XmlDocument has proved a part
/// well-formed before; names here are as they are written, whatever they mean.
namespace tessarine::builtin
{

/// White space of markup (XML 1.0 2.3).
constexpr bool IsSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// The characters in front of which a name of an element or attribute ends.
inline constexpr auto nameEnds = [] {
    std::array<bool, 256> ends{};
    for (const char c : {' ', '\t', '\r', '\n', '/', '>', '<', '=', '"', '\''})
        ends[static_cast<unsigned char>(c)] = true;
    return ends;
}();

constexpr bool EndsName(char c)
{
    return nameEnds[static_cast<unsigned char>(c)];
}

/// The qualified name of the element whose tag the text begins with.
std::string_view ElementName(std::string_view tag);
/// The name without its prefix and colon.
inline std::string_view LocalName(std::string_view qualifiedName)
{
    // Prefixes are short: a loop beats a call.
    std::size_t colon = 0;
    while (colon < qualifiedName.size() && qualifiedName[colon] != ':')
        ++colon;
    return colon == qualifiedName.size() ? qualifiedName : qualifiedName.substr(colon + 1);
}

/// An element's bytes.
struct ElementRange {
    std::size_t begin = 0;         ///< Its "<".
    std::size_t contentBegin = 0;  ///< After the ">" of its start tag.
    std::size_t contentEnd = 0;    ///< The "<" of its end tag; contentBegin for an empty-element tag.
    std::size_t end = 0;           ///< After its last ">".
    std::string_view name;         ///< Qualified name, as written.

    bool IsEmptyTag() const { return contentEnd == end; }  ///< "/>": there is no end tag.
    std::string_view Prefix() const;                       ///< With its colon; empty without a prefix.
};

/// The element whose "<" stands at an offset. Raises `FileCorrupt` when there is none or it does not end.
ElementRange ScanElement(std::string_view xml, std::size_t at);

/// Offset of the next "<" of a child element at or after `at` within [at, end), skipping text, comments, CDATA and
/// processing instructions; `end` when there is none.
std::size_t NextChild(std::string_view xml, std::size_t at, std::size_t end);

/// Where an attribute's value stands.
struct AttributeRange {
    std::size_t begin = 0;       ///< First character of the name.
    std::size_t valueBegin = 0;  ///< After the opening quote.
    std::size_t valueEnd = 0;    ///< The closing quote.
    bool found = false;
};

/// An attribute of the element that begins at `at`, by its qualified name; `found` is false when it has none.
AttributeRange FindAttribute(std::string_view xml, std::size_t at, std::string_view name);

}  // namespace tessarine::builtin
