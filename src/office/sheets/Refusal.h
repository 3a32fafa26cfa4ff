#pragma once

#include <string>
#include <string_view>

#include "platform/Failure.h"

namespace tessarine::sheets
{

/// The failure of the spreadsheet application: `ApplicationDefined` whatever the reason, as Excel raises it, with a
/// text that tells the reason. Given back, not raised, so that callers read "throw Refusal(...)".
inline Failure Refusal(std::string_view what)
{
    return {FailureNumber::ApplicationDefined, FromUtf8(what)};
}

/// The failure for a file that ends early or contradicts itself: `ApplicationDefined`, with a text that begins with
/// "The file is damaged".
inline Failure Damage(std::string_view what)
{
    return Refusal("The file is damaged: " + std::string(what));
}

}  // namespace tessarine::sheets
