#include "shell/TaskbarProgress.h"

#include <utility>

namespace tessarine
{

namespace
{

TaskbarProgressPort taskbar;

}  // namespace

TaskbarProgressPort SetTaskbarProgress(TaskbarProgressPort port)
{
    return std::exchange(taskbar, std::move(port));
}

void ShowTaskbarProgress(double share)
{
    if (taskbar)
        taskbar(share);
}

void HideTaskbarProgress()
{
    if (taskbar)
        taskbar(std::nullopt);
}

}  // namespace tessarine
