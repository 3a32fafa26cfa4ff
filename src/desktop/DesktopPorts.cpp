#include "desktop/DesktopPorts.h"

#include <memory>

#include <QApplication>

#include "desktop/EventDelivery.h"
#include "desktop/QtMessageBox.h"
#include "desktop/Taskbar.h"
#include "platform/Messages.h"
#include "shell/TaskbarProgress.h"
#include "ui/run/QtTimer.h"

namespace tessarine
{

namespace
{

void ShowQtPointer(MousePointer pointer)
{
    // Qt stacks these shapes; the port knows only the one in force.
    while (QGuiApplication::overrideCursor() != nullptr)
        QGuiApplication::restoreOverrideCursor();
    if (pointer == MousePointer::Hourglass)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

}  // namespace

DesktopPorts::DesktopPorts()
{
    SetMessageBox(ShowQtMessageBox);
    const auto delivery = std::make_shared<EventDelivery>();
    SetDeliverPendingEvents([delivery] { delivery->Deliver(); });
    SetDeliverEventsAtOnce([delivery] { delivery->DeliverAtOnce(); });
    SetMousePointerReceiver(ShowQtPointer);
    SetTaskbarProgress(TellTaskbar);
    UseQtTimers();
}

DesktopPorts::~DesktopPorts()
{
    // From here on Qt may be gone. Whoever still asks gets the answer of a process without a user.
    SetMessageBox({});
    SetDeliverPendingEvents({});
    SetDeliverEventsAtOnce({});
    SetMousePointerReceiver({});
    SetTaskbarProgress({});
}

}  // namespace tessarine
