#pragma once

#include <cstdint>
#include <optional>

#include "platform/String.h"

namespace tessarine
{

/// A text of the processing window, as the active language has it; empty for a key without one.
String ProcessingText(const String& key);

/// The same with, as far as they are given, a number in place of every "%d", one for "%i" and a text for "%s"; other
/// placeholders stay as they are written. The text comes last, so that a path with "%d" in it stays as it is.
String ProcessingText(const String& key, std::optional<std::int32_t> d, std::optional<std::int32_t> i = {},
                      const std::optional<String>& s = {});

}  // namespace tessarine
