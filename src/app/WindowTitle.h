#pragma once

#include "platform/String.h"

namespace tessarine
{

/// A window's caption: the title, " (Modified)" when `isModified`, " - " and the application's title.
String BuildWindowTitle(const String& title, bool isModified);

}  // namespace tessarine
