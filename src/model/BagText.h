#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/String.h"

namespace tessarine
{

/// Texts as a property bag stores them: UTF-8 that holds every UTF-16 text without loss. A lone surrogate is written as
/// the three bytes that its number would have (U+D800: ED A0 80), which plain UTF-8 leaves unused; a pair is written as
/// its code point. Each text so has exactly one form.

/// The stored form of a text.
std::string BagTextFrom(StringView text);

/// The text of a stored form; nothing when the bytes are not one (not UTF-8, not the shortest form, beyond U+10FFFF, or
/// two lone surrogates that make a pair).
std::optional<String> TextFromBag(std::string_view bytes);

}  // namespace tessarine
