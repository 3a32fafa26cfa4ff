#pragma once

#include <functional>
#include <optional>

/// How far a run has come, on the icon of the program in the taskbar or dock.
namespace tessarine
{

/// Shows a share from 0 to 1; without one, takes the progress away.
using TaskbarProgressPort = std::function<void(std::optional<double> share)>;

/// Puts another port in force, and gives the one before. An empty port shows nothing.
TaskbarProgressPort SetTaskbarProgress(TaskbarProgressPort port);

/// Both go to the port in force. Neither raises, because a run goes on whatever becomes of its progress.
void ShowTaskbarProgress(double share);
void HideTaskbarProgress();

}  // namespace tessarine
