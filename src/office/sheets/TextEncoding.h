#pragma once

#include <string_view>

#include "platform/String.h"

namespace tessarine::sheets
{

/// The text of a file that does not say how it is encoded: UTF-8 or UTF-16 by its mark, UTF-8 when all of it is valid,
/// the system's code page otherwise. After a UTF-8 mark, a byte that is not UTF-8 becomes what FromUtf8 makes of it; a
/// last half unit of UTF-16 becomes U+FFFD. The mark is not part of the text. No bytes give no text, and nothing fails.
String DecodeText(std::string_view bytes);

}  // namespace tessarine::sheets
