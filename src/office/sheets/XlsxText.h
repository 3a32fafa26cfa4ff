#pragma once

#include <string>

#include "platform/String.h"

/// Texts in the markup of Office Open XML workbooks (ECMA-376 part 1, 22.9.2.19 ST_Xstring): what XML can't hold, or
/// would not keep, is written "_xHHHH_". Unlike in presentations this stands for any UTF-16 unit, and whatever text
/// looks like it is read so.
namespace tessarine::sheets
{

/// Puts the units in place of their escapes.
void JoinEscapes(String& text);

/// A text as the content of an element, in UTF-8. Reads back as the same text, lone surrogates included.
std::string EscapeCellText(StringView text);

}  // namespace tessarine::sheets
