#pragma once

#include <functional>

#include <QStringList>

#include "platform/String.h"

namespace tessarine
{

/// Has the desktop know a file type and open it with this program: files that end in "." plus `Extension`, of the class
/// `ClassName`, shown as `Description`. On Linux a desktop entry, a MIME type ("application/x-" plus the class) and two
/// icons in the user's data home take the place of the four keys of a registry, and the icons are the program's own
/// whatever `IconPath` says. The user's choice of programs for his file types stays.
///
/// Nothing is written that stands there already. What can't be written is left out without a word; a failure of another
/// kind is logged.
void RegisterFileType(const String& ClassName, const String& Extension, const String& Description,
                      const String& IconPath);

/// Starts one of the desktop's tools, which brings its tables up to date with the files that were written.
using DesktopToolPort = std::function<void(const QString& program, const QStringList& arguments)>;

/// Puts another way of starting tools in the place of a process that runs by itself, and gives the one before. An empty
/// one brings the process back.
DesktopToolPort SetDesktopTool(DesktopToolPort port);

}  // namespace tessarine
