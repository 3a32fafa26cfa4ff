#pragma once

#include <string>
#include <string_view>

namespace tessarine::builtin
{

/// How a part's bytes hold its characters. Office programs write UTF-8; UTF-16 is allowed (ECMA-376 part 2, 9.1.4).
enum class XmlEncoding {
    Utf8,
    Utf16LittleEndian,
    Utf16BigEndian,
    Ascii  ///< Declared as something else; all is well as long as the bytes stay within ASCII.
};

/// The encoding of a part, by its byte order mark or, without one, by how "<" stands in it. Raises `FileCorrupt` for a
/// declared encoding that is neither UTF-8 nor UTF-16 when the part has bytes beyond ASCII.
XmlEncoding EncodingOf(std::string_view bytes, std::string_view part);

/// The part as UTF-8; `encoding` is what EncodingOf gave for it. A byte order mark stays, as U+FEFF. Raises
/// `FileCorrupt` for UTF-16 that is cut or holds half a surrogate pair.
std::string DecodeXml(std::string_view bytes, XmlEncoding encoding, std::string_view part);

/// The reverse, for a part that DecodeXml has given: the same bytes again for what was not edited. What ASCII can't
/// hold becomes character references.
std::string EncodeXml(std::string_view utf8, XmlEncoding encoding);

}  // namespace tessarine::builtin
