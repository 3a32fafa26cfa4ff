#include "desktop/DesktopPorts.h"

#include <chrono>

#include <QApplication>

#include "desktop/LauncherProgress.h"
#include "desktop/QtMessageBox.h"
#include "platform/Messages.h"
#include "shell/TaskbarProgress.h"
#include "ui/run/QtTimer.h"

namespace tessarine
{

namespace
{

/// A run asks for delivery at every shape; a window that reacts within this time feels immediate, and looking for
/// events more often would slow the run down.
constexpr std::chrono::milliseconds betweenDeliveries{60};

void DeliverQtEvents()
{
    using Clock = std::chrono::steady_clock;
    static Clock::time_point last;
    const Clock::time_point now = Clock::now();
    if (now - last < betweenDeliveries)
        return;
    last = now;  // what is delivered may ask, too
    QCoreApplication::processEvents();
    last = Clock::now();
}

void ShowQtPointer(MousePointer pointer)
{
    while (QGuiApplication::overrideCursor() != nullptr)
        QGuiApplication::restoreOverrideCursor();
    if (pointer == MousePointer::Hourglass)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

}  // namespace

DesktopPorts::DesktopPorts()
{
    SetMessageBox(ShowQtMessageBox);
    SetDeliverPendingEvents(DeliverQtEvents);
    SetMousePointerReceiver(ShowQtPointer);
    SetTaskbarProgress(TellLaunchers);
    UseQtTimers();
}

DesktopPorts::~DesktopPorts()
{
    SetMessageBox({});
    SetDeliverPendingEvents({});
    SetMousePointerReceiver({});
    SetTaskbarProgress({});
}

}  // namespace tessarine
