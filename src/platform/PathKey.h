#pragma once

#include "platform/String.h"

namespace tessarine
{

/// A path, or a name, in a form that is equal for those that the system takes for one by their letters alone: on
/// Windows neither the case counts nor which separator it is. On other systems the path as it is.
///
/// To compare by and to look up by; not to be shown, and not to be given to the system.
String PathKey(StringView path);

}  // namespace tessarine
