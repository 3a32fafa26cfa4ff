#pragma once

#include "platform/String.h"

namespace tessarine
{

/// Where a procedure of the model stands, as the lines of the error log name it. `Project`'s procedures are spread over
/// the model and the run.
inline constexpr StringView ProjectPlace = u"Class Module Project";
inline constexpr StringView FindAndReplaceItemsPlace = u"Class Module FindAndReplaceItems";
inline constexpr StringView CustomPropertiesPlace = u"Class Module CustomProperties";

}  // namespace tessarine
