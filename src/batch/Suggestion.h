#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tessarine::batch
{

/// "; did you mean "slides"?" for a word that is nearly one of `names`; empty when none is near. A word is near that
/// becomes the name by few letters put in, left out, taken for others or exchanged with their neighbour, or that begins
/// the name; the nearest one is told, of several the first.
std::string DidYouMean(std::string_view word, std::span<const std::string_view> names);

}  // namespace tessarine::batch
