#pragma once

#include "platform/String.h"

namespace tessarine
{

/// Whether a file has FileAttribute::ReadOnly. False for one that can't be looked at. Unlike GetAttributes it asks
/// nobody but the system, so that any thread may.
bool IsReadOnly(StringView path);

}  // namespace tessarine
