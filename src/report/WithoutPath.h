#pragma once

#include "platform/String.h"

namespace tessarine
{

/// A reason or a warning as it stands beside the path of its file, where the path need not stand twice: "Can't save
/// "/decks/a.pptx": Permission denied" becomes "Can't save it: Permission denied". Longer paths that begin or end with
/// this one, such as that of a backup, stay.
String WithoutPath(StringView text, StringView path);

}  // namespace tessarine
