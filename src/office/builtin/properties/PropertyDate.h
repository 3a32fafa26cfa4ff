#pragma once

#include <optional>

#include "model/PowerPoint.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// A date-time of a property as files hold it (W3CDTF: "2024-05-06T07:08:09Z", with an offset, or the date alone), in
/// local time. A part of a second is ignored, a time without an offset is in UTC, and what follows is not looked at.
/// Nothing for text of another form, and for a date that the system can't convert.
std::optional<powerpoint::Date> ReadPropertyDate(StringView text);

}  // namespace tessarine::builtin
