#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>
#include <string>
#include <vector>

namespace tessarine
{

/// A dock: it listens for progress on a bus.
class Dock : public QObject
{
    Q_OBJECT

public:
    explicit Dock(const QString& bus) : connection_(QDBusConnection::connectToBus(bus, "dock"))
    {
        connection_.connect({}, {}, "com.canonical.Unity.LauncherEntry", "Update", this,
                            SLOT(Update(QString, QVariantMap)));
    }
    ~Dock() override { QDBusConnection::disconnectFromBus("dock"); }

    bool IsListening() const { return connection_.isConnected(); }

    std::vector<std::string> updates;

public Q_SLOTS:
    void Update(const QString& program, const QVariantMap& properties)
    {
        updates.push_back(program.toStdString() + ": " + properties["progress"].toString().toStdString() +
                          (properties["progress-visible"].toBool() ? " shown" : " hidden"));
    }

private:
    QDBusConnection connection_;
};

}  // namespace tessarine
