#pragma once

#include "platform/String.h"

namespace tessarine
{

/// Has a browser that can be automated show an address: creates the object of a registered program, which is given by
/// its name or by its class ("{...}"), makes it visible and has it navigate. False when one of these fails, as where
/// there is no such program, which on Linux is always so. A browser that has been made stays, as it is the user's.
bool ShowInBrowserObject(StringView program, const String& address);

}  // namespace tessarine
