#pragma once

#include "platform/String.h"

namespace tessarine
{

/// Simple Unicode case folding, without regard to a locale: one code point to one code point of the same length in
/// UTF-16, so that positions in the folded text are positions in the text ("ß" and "ss" differ).
String FoldCase(StringView text);

/// One UTF-16 unit folded; a surrogate stays as it is.
char16_t FoldCase(char16_t unit);

/// Simple upper-casing under the same rule: lengths stay.
String ToUpper(StringView text);

/// True for a Unicode letter, digit, combining mark or "_". A surrogate pair is judged by its code point: pass both.
bool IsWordCharacter(char32_t codePoint);

}  // namespace tessarine
