#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/String.h"

/// Text in XML: escaping, unescaping, and where each character of an element's text stands in its bytes.
namespace tessarine::builtin
{

/// UTF-8 with `& < >` escaped (and the quote, for attributes). What XML can't hold (lone surrogates, U+FFFE, U+FFFF)
/// becomes U+FFFD.
std::string EscapeText(StringView text);
/// As EscapeText for a value in either kind of quotes; tabs and line ends become references, as they would be read as
/// blanks.
std::string EscapeAttribute(StringView text);

/// As EscapeText, but control characters other than tab are written "_xHHHH_", as PresentationML text holds them, and a
/// literal text of that form has its first underscore written "_x005F_", so that it stays what it is. A control
/// character right after a literal "_x005F" can't be written at all and becomes U+FFFD.
std::string EscapeRunText(StringView text);

/// As EscapeRunText for property values, with small digits: CR and LF are written "_x000d_" and "_x000a_".
std::string EscapePropertyText(StringView text);

/// True when `read` is what is read again of `written`, by whichever of the functions above: the same units, but for
/// those that can't be written and became U+FFFD.
bool ReadsAs(StringView read, StringView written);

/// What becomes of elements inside of content that is read as text.
enum class InnerElements {
    Refused,  ///< Raises `FileCorrupt`: the content belongs to an element that holds text alone.
    Skipped   ///< They and what is in them are passed over, as comments are.
};

/// Appends the text that an element's content stands for: the units of ContentUnits.
void AppendContent(std::string_view content, String& text, InnerElements elements = InnerElements::Refused);

/// As AppendContent, but a "_xHHHH_" stays as it is written, for markup in which it stands for other characters, too.
void AppendCharacters(std::string_view content, String& text, InnerElements elements = InnerElements::Refused);

/// An attribute value as it reads: references decoded, line ends and tabs as blanks.
std::string DecodeAttribute(std::string_view value);

/// One UTF-16 unit of an element's content and the bytes that it stands for. Both halves of a surrogate pair have the
/// same bytes. Kept small, as a text may have very many; parts are smaller than 4 GiB.
struct ContentUnit {
    char16_t unit;
    bool inCData;  ///< It stands in a CDATA section, where nothing is escaped.
    std::uint32_t begin;
    std::uint32_t end;
};

/// The text of an element's content as units with their bytes, positions counting from the start of `content`.
///
/// Character and entity references, CDATA sections and line ends (CR LF and CR read as LF) are understood; comments and
/// processing instructions are passed over. What that gives is searched for "_xHHHH_" of a control character, which is
/// one unit, whatever its seven characters are written as ("&#95;x000B_" is VT). An "&" that begins no reference and
/// bytes that are no UTF-8 stand for themselves (see FromUtf8). Raises `FileCorrupt` on markup that does not end.
std::vector<ContentUnit> ContentUnits(std::string_view content, InnerElements elements = InnerElements::Refused);

/// New content for an element that holds `content`: what the new text has in common with the old at both ends keeps its
/// bytes, the rest is written by `escape`. Raises `FileCorrupt` as ContentUnits does, and on elements in the content.
std::string ReplaceContent(std::string_view content, StringView text, std::string (*escape)(StringView));

}  // namespace tessarine::builtin
