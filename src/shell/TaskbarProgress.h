#pragma once

#include <functional>
#include <optional>

/// How far a run has come, on the icon of the program in the taskbar or dock.
namespace tessarine
{

/// Shows a share from 0 to 1, or none any more.
using TaskbarProgressPort = std::function<void(std::optional<double> share)>;

/// Replaces the port and returns the one before. An empty port shows nothing.
TaskbarProgressPort SetTaskbarProgress(TaskbarProgressPort port);

/// Neither raises; a run goes on whatever becomes of its progress.
void ShowTaskbarProgress(double share);
void HideTaskbarProgress();

}  // namespace tessarine
