#pragma once

#include <optional>

namespace tessarine
{

/// Tells the taskbar how far a run has come (0 to 1, or nothing any more). Where nobody listens, nothing happens.
///
/// - On Linux the taskbars and docks of the session: Plasma's, Ubuntu's and others listen on the session bus for the
///   signal "Update" of com.canonical.Unity.LauncherEntry.
/// - On Windows the buttons of the program's windows (ITaskbarList3).
void TellTaskbar(std::optional<double> share);

}  // namespace tessarine
