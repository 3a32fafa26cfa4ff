#pragma once

#include <functional>

#include "platform/String.h"

namespace tessarine
{

/// Opens the program's help. Nothing is shown when that fails.
void ShowHelp();

/// Shows the help whose full path is given.
using HelpViewerPort = std::function<void(const String& path)>;

/// Puts another viewer in the place of the system's, and gives the one before. An empty one brings the system's back.
HelpViewerPort SetHelpViewer(HelpViewerPort port);

}  // namespace tessarine
