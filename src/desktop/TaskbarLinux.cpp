#include "desktop/Taskbar.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QGuiApplication>

namespace tessarine
{

void TellTaskbar(std::optional<double> share)
{
    // Without an address the library would start a bus of its own, on which nobody listens.
    if (!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"))
        return;
    QDBusMessage update = QDBusMessage::createSignal("/com/canonical/unity/launcherentry/1",
                                                     "com.canonical.Unity.LauncherEntry", "Update");
    update << "application://" + QGuiApplication::desktopFileName() + ".desktop"
           << QVariantMap{{"progress", share.value_or(0.0)}, {"progress-visible", share.has_value()}};
    QDBusConnection::sessionBus().send(update);  // not connected: fails at once
}

}  // namespace tessarine
