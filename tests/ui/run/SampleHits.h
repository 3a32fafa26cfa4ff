#pragma once

#include <string>
#include <vector>

#include "engine/Hit.h"

namespace tessarine
{

/// A hit of the pair at `pair`, in the second paragraph of "Text 1" on slide 3, whose title is "Plan".
Hit HitOnSlide(std::int32_t pair, String before, String text, String after);

/// The same hit as a replace run tells it.
Hit Replaced(Hit hit, String becomes);

/// The same hit somewhere else.
Hit At(Hit hit, HitPlace place, std::int32_t paragraph = 0);

/// All that a hit tells, on one line.
std::string Described(const Hit& hit);
std::vector<std::string> Described(const std::vector<Hit>& hits);

}  // namespace tessarine
