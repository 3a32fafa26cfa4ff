#pragma once

#include <cstdint>

#include "platform/String.h"

namespace tessarine
{

/// A text of the processing window, as the active language has it.
String ProcessingText(const String& key);

/// The same with a number in place of every "%d", one for "%i" and a text for "%s".
String ProcessingText(const String& key, std::int32_t d, std::int32_t i = 0, const String& s = {});

}  // namespace tessarine
