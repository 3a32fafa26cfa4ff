#include "shell/FolderDialog.h"

#include <QWidget>

#include "shell/GetFolder.h"

namespace tessarine
{

String ShowFolderDialog(QWidget* owner, const String& startFolder, const String& title, bool includeFiles,
                        bool newStyle)
{
    HWND const window = owner == nullptr ? nullptr : reinterpret_cast<HWND>(owner->window()->winId());
    return GetFolder(window, startFolder, title, includeFiles, newStyle);
}

}  // namespace tessarine
