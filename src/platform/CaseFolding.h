#pragma once

#include "platform/String.h"

namespace tessarine
{

/// Simple Unicode case folding, without regard to a locale: one code point to one code point of the same length in
/// UTF-16, so that positions in the folded text are positions in the text ("ß" and "ss" differ).
String FoldCase(StringView text);

/// One UTF-16 unit folded; a surrogate stays as it is.
char16_t FoldCase(char16_t unit);

/// As FoldCase, but under the system's locale, for what a person looks for: in Turkish and Azeri "İ" is a capital "i"
/// and "I" a capital "ı", elsewhere both are letters of their own.
String FoldCaseLocally(StringView text);

/// As FoldCase, with the four of "i", "I", "ı" and "İ" as one letter: equal for texts that are equal by either function
/// above, so that a look at it may rule a text out under any locale.
String FoldCaseWidely(StringView text);
char16_t FoldCaseWidely(char16_t unit);

/// Simple upper-casing under the same rule: lengths stay.
String ToUpper(StringView text);

/// True for a Unicode letter, digit, combining mark or "_". A surrogate pair is judged by its code point: pass both.
bool IsWordCharacter(char32_t codePoint);

}  // namespace tessarine
