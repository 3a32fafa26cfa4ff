#pragma once

#include <cstddef>
#include <string_view>

/// Where elements begin and end in the bytes of a part. The parser (XmlDocument) has proved the part well-formed
/// before; this finds the byte ranges that an edit needs and the parser does not tell.
namespace tessarine::builtin
{

/// A start tag or an empty-element tag. All offsets are into the scanned text.
struct StartTag {
    std::size_t begin = 0;  ///< Its "<".
    std::size_t end = 0;    ///< Behind its ">".
    std::string_view name;  ///< Qualified name, as written.

    bool isEmpty = false;  ///< "/>": there is neither content nor an end tag.
};

/// The tag whose "<" stands at an offset. Raises -2147023504 when there is none or it does not end.
StartTag ReadStartTag(std::string_view xml, std::size_t at);

/// Offset of the next "<" of a start or end tag at or behind `at`, skipping text, comments, CDATA and processing
/// instructions. Raises -2147023504 when there is none.
std::size_t NextTag(std::string_view xml, std::size_t at);

/// True for the "<" of an end tag.
bool IsEndTag(std::string_view xml, std::size_t at);

/// Offset behind the ">" of the tag that begins at `at`; attribute values may hold one. Raises -2147023504.
std::size_t BehindTag(std::string_view xml, std::size_t at);

std::string_view LocalName(std::string_view qualifiedName);

/// An element's bytes.
struct ElementRange {
    std::size_t begin = 0;         ///< Its "<".
    std::size_t contentBegin = 0;  ///< Behind the ">" of its start tag.
    std::size_t contentEnd = 0;    ///< The "<" of its end tag; contentBegin for an empty-element tag.
    std::size_t end = 0;           ///< Behind its last ">".
    std::string_view name;         ///< Qualified name, as written.

    bool IsEmptyTag() const { return contentEnd == end; }
    std::string_view Prefix() const;  ///< With its colon; empty without a prefix.
};

/// The element whose "<" stands at an offset. Raises -2147023504 when there is none or it does not end.
ElementRange ScanElement(std::string_view xml, std::size_t at);

/// Offset of the next "<" of a child element at or behind `at` within [at, end), skipping text, comments, CDATA and
/// processing instructions; `end` when there is none.
std::size_t NextChild(std::string_view xml, std::size_t at, std::size_t end);

/// Where an attribute's value stands.
struct AttributeRange {
    std::size_t begin = 0;       ///< First character of the name.
    std::size_t valueBegin = 0;  ///< Behind the opening quote.
    std::size_t valueEnd = 0;    ///< The closing quote.
    bool found = false;
};

/// An attribute of the element that begins at `at`, by its qualified name.
AttributeRange FindAttribute(std::string_view xml, std::size_t at, std::string_view name);

}  // namespace tessarine::builtin
