#include "shell/TaskbarProgress.h"

#include <utility>

#include "log/Treatments.h"

namespace tessarine
{

namespace
{

TaskbarProgressPort taskbar;

void Tell(std::optional<double> share)
{
    // No run fails for its taskbar.
    Skip([share] {
        if (taskbar)
            taskbar(share);
    });
}

}  // namespace

TaskbarProgressPort SetTaskbarProgress(TaskbarProgressPort port)
{
    return std::exchange(taskbar, std::move(port));
}

void ShowTaskbarProgress(double share)
{
    Tell(share);
}

void HideTaskbarProgress()
{
    Tell(std::nullopt);
}

}  // namespace tessarine
