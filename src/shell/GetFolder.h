#pragma once

#include <string>

#include "platform/String.h"
#include "platform/WindowsHeaders.h"

// After the system's own, which it builds on.
#include <shlobj.h>

/// The folder dialog of Windows; for files that end in "Windows.cpp". Titles and paths go through the system's code
/// page.
namespace tessarine
{

/// Shows SHBrowseForFolderA above `Owner`, which may be null, beginning at `StartFolder`; at its default place when
/// that is empty or has a letter that the code page lacks. Gives the path chosen, which ends in a separator only when
/// it is a root. Empty when none was chosen, or one that is no folder of the file system. A path with a letter that the
/// code page lacks comes as the shell has it in Unicode: the other form would name another folder.
///
/// Only folders of the file system can be chosen; with `IncludeFiles` the dialog shows files, too. With `NewStyle` it
/// can be resized and make folders.
String GetFolder(HWND Owner, const String& StartFolder, const String& Title, bool IncludeFiles, bool NewStyle);

/// The folder that the dialog begins at, in the code page and followed by one NUL.
inline std::string BrowseStartFolder;

/// The dialog's callback, installed when there is a folder to begin at. When the dialog is ready it has it select
/// BrowseStartFolder; when the selection has changed it gives it the new path as status text. Gives 0. What fails is
/// passed over.
int CALLBACK BrowseCallbackProc(HWND Window, UINT Message, LPARAM Param, LPARAM Data);

/// Hands a function's address back unchanged. It exists so that the address can be stored in a record.
BFFCALLBACK GetAddressofFunction(BFFCALLBACK Address);

}  // namespace tessarine
