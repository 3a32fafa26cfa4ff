#pragma once

#include "platform/String.h"

namespace tessarine
{

/// Full path of the help in the program's DataFolder: its contents page "Help/index.html", on Windows "Help.chm", which
/// holds all pages.
String HelpPath();

/// Shows the help with the desktop's opener, on Windows with the system's help library, whose window then belongs to
/// the main window. Nothing happens without the file or the library.
void ShowHelpFile(const String& path);

}  // namespace tessarine
