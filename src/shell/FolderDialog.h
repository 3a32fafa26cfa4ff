#pragma once

#include "platform/String.h"

class QWidget;

namespace tessarine
{

/// Shows the desktop's own folder dialog above `owner`, which may be null, beginning at `startFolder` when it is not
/// empty. Gives the path chosen, without a separator at its end unless it is a root; empty when none was chosen. Qt's
/// dialog on Linux can always be resized and make folders, so that `newStyle` has no meaning there; on Windows see
/// GetFolder.
String ShowFolderDialog(QWidget* owner, const String& startFolder, const String& title, bool includeFiles,
                        bool newStyle);

}  // namespace tessarine
