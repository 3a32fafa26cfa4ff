#pragma once

#include "platform/String.h"

namespace tessarine
{

/// Has the desktop know a file type and open it with this program: files that end in "." plus `Extension`, of the class
/// `ClassName`, shown as `Description`. What can't be written is left out without a word; a failure of another kind is
/// logged.
///
/// On Windows four keys of the registry, below HKEY_CLASSES_ROOT:
/// - ".<Extension>": the class
/// - "<ClassName>": the description
/// - "<ClassName>\shell\open\command": the program's path and "%1"
/// - "<ClassName>\DefaultIcon": `IconPath`
/// Neither the path nor "%1" is quoted, so that the program gets a file whose path holds blanks as several arguments.
/// Intended: it reads none, and what stands in the registry is what has always stood there.
///
/// On Linux a desktop entry, a MIME type ("application/x-" plus the class) and two icons in the user's data home, and
/// the icons are the program's own whatever `IconPath` says. The user's choice of programs for his file types stays.
/// Nothing is written that stands there already, and nothing at all where the program's installation has told the
/// desktop of it: its entry lies where the desktop looks, and the user has none of his own.
void RegisterFileType(const String& ClassName, const String& Extension, const String& Description,
                      const String& IconPath);

}  // namespace tessarine
