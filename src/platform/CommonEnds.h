#pragma once

#include <cstddef>

#include "platform/String.h"

namespace tessarine
{

/// What two texts have in common at their beginnings and at their ends, in UTF-16 units. The two never overlap in
/// either text.
struct CommonEnds {
    std::size_t front;  // at the beginning
    std::size_t back;   // at the end
};

/// The longest common ends of two texts; what is common at the front is not counted again at the back. Neither end
/// divides a surrogate pair of either text.
CommonEnds CommonEndsOf(StringView before, StringView after);

}  // namespace tessarine
