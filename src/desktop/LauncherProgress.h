#pragma once

#include <optional>

namespace tessarine
{

/// Tells the taskbars and docks of the session how far a run has come (0 to 1, or nothing any more): Plasma's, Ubuntu's
/// and others listen on the session bus for the signal "Update" of com.canonical.Unity.LauncherEntry. Without a session
/// bus, or when nobody listens, nothing happens.
void TellLaunchers(std::optional<double> share);

}  // namespace tessarine
