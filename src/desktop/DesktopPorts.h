#pragma once

namespace tessarine
{

/// While it lives, what stands below the windows reaches the user through Qt: messages are boxes above the active
/// window, events are delivered, the pointer takes its shape, timers tick, taskbars show how far a run has come. There
/// must be a QApplication.
class DesktopPorts
{
public:
    DesktopPorts();
    ~DesktopPorts();
    DesktopPorts(const DesktopPorts&) = delete;
    DesktopPorts& operator=(const DesktopPorts&) = delete;
};

}  // namespace tessarine
