#pragma once

#include <functional>

#include <QStringList>

namespace tessarine
{

/// Starts one of the desktop's tools, which brings its tables up to date with the files that RegisterFileType wrote.
/// For Linux alone.
using DesktopToolPort = std::function<void(const QString& program, const QStringList& arguments)>;

/// Puts another way of starting tools in the place of a process that runs by itself, and gives the one before. An empty
/// one brings the process back.
DesktopToolPort SetDesktopTool(DesktopToolPort port);

}  // namespace tessarine
