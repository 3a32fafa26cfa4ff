#pragma once

namespace tessarine
{

/// While it lives, the floors below the windows reach the user through Qt. There must be a QApplication.
///
/// - Messages are boxes above the active window.
/// - Pending events are delivered, at most once in EventDelivery::Between however often a run asks, unless it asks for
///   them at once.
/// - The pointer takes its shape, for all windows alike.
/// - Timers tick, and taskbars show how far a run has come.
///
/// Afterwards messages, events, the pointer and taskbars have no receiver; timers stay Qt's.
class DesktopPorts
{
public:
    DesktopPorts();   ///< Sets the ports.
    ~DesktopPorts();  ///< Takes them back, but for the timers.
    DesktopPorts(const DesktopPorts&) = delete;
    DesktopPorts& operator=(const DesktopPorts&) = delete;
};

}  // namespace tessarine
