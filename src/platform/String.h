#pragma once

#include <string>
#include <string_view>

namespace tessarine
{

/// Text of the model, the engine and the automation surfaces: UTF-16, because positions and lengths are UTF-16 code
/// units there. Files and the terminal are UTF-8.
using String = std::u16string;
using StringView = std::u16string_view;

/// UTF-8 to UTF-16, without loss: a byte that is not part of valid UTF-8 becomes the lone surrogate U+DC00 + byte
/// (U+DC80 to U+DCFF), so that a file name in a foreign encoding survives the way through the model and back.
/// NUL is an ordinary character.
String FromUtf8(std::string_view text);

/// UTF-16 to UTF-8. A lone surrogate U+DC80 to U+DCFF gives back the byte that it stands for (see FromUtf8); any other
/// lone surrogate becomes U+FFFD.
std::string ToUtf8(StringView text);

/// The text without the blanks (U+0020 alone) at its ends.
String Trim(StringView text);

/// Appends one Unicode code point as UTF-8. Surrogates and values above U+10FFFF become U+FFFD.
void AppendUtf8(std::string& text, char32_t codePoint);

}  // namespace tessarine
