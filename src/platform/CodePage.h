#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/String.h"

namespace tessarine
{

/// Bytes in a code page as text. A byte sequence without a meaning becomes U+FFFD. An unknown name is taken for
/// windows-1252.
String FromCodePage(std::string_view bytes, const std::string& name);

/// The reverse. Nothing for a text that the code page can't hold: one whose bytes would not be read as the same text.
std::optional<std::string> ToCodePage(StringView text, const std::string& name);

/// The name of the code page that has this number on Windows, for the functions above.
std::string CodePageName(std::uint16_t number);

/// The code page of texts on this system that are neither Unicode nor say what they are: the locale's character set,
/// windows-1252 when that is UTF-8 or ASCII.
std::string SystemCodePage();

}  // namespace tessarine
