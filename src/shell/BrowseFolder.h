#pragma once

#include <functional>

#include "platform/String.h"

class QWidget;

namespace tessarine
{

/// Has the user choose a folder, beginning at `Folder` when it is not empty. A choice is stored in `Folder`, with a
/// separator at its end, and gives true; otherwise `Folder` stays and the result is false. With `IncludeFiles` the
/// dialog shows files beside the folders. `NewStyle` asks for a dialog that can be resized and make folders; those of
/// Linux always can. A failure is logged and gives false.
bool BrowseFolder(QWidget* Owner, String& Folder, const String& Title, bool IncludeFiles, bool NewStyle);

/// Shows a folder dialog and hands back the path chosen, without a separator at its end unless it is a root; empty when
/// none was chosen.
using FolderDialogPort =
    std::function<String(QWidget* owner, const String& startFolder, const String& title, bool includeFiles)>;

/// Puts another dialog in the place of the system's, and gives the one before. An empty one brings the system's back.
FolderDialogPort SetFolderDialog(FolderDialogPort port);

}  // namespace tessarine
