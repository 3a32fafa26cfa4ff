#include "desktop/TaskbarLinuxTest.h"

#include <gmock/gmock.h>

#include <memory>

#include <QGuiApplication>
#include <QProcess>
#include <QTest>

#include "desktop/DesktopPorts.h"
#include "desktop/Taskbar.h"
#include "shell/TaskbarProgress.h"

namespace tessarine
{

namespace
{

using testing::ElementsAre;

constexpr const char* busAddress = "DBUS_SESSION_BUS_ADDRESS";

/// A session of the user with a bus of its own, on which the program talks from its first use on. The library keeps its
/// connection for as long as the process lives, so that all these tests share the bus.
class TaskbarTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        QGuiApplication::setDesktopFileName("tessarine");
        daemon_ = std::make_unique<QProcess>();
        daemon_->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        daemon_->start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        ASSERT_TRUE(daemon_->waitForReadyRead(patience));
        address_ = QString::fromUtf8(daemon_->readLine()).trimmed();
        before_ = qgetenv(busAddress);
        qputenv(busAddress, address_.toUtf8());
    }
    static void TearDownTestSuite()
    {
        before_.isNull() ? qunsetenv(busAddress) : qputenv(busAddress, before_);
        daemon_->kill();
        daemon_->waitForFinished();
        daemon_.reset();
    }

    static const QString& Address() { return address_; }

    static constexpr int patience = 30'000;  // milliseconds

private:
    static inline std::unique_ptr<QProcess> daemon_;
    static inline QString address_;
    static inline QByteArray before_;
};

TEST_F(TaskbarTest, IsToldToTheDocksOfTheSession)
{
    const Dock dock(Address());
    ASSERT_TRUE(dock.IsListening());

    TellTaskbar(0.25);
    TellTaskbar(std::nullopt);

    EXPECT_TRUE(QTest::qWaitFor([&dock] { return dock.updates.size() == 2; }, patience));
    EXPECT_THAT(dock.updates, ElementsAre("application://tessarine.desktop: 0.25 shown",
                                          "application://tessarine.desktop: 0 hidden"));
}

TEST_F(TaskbarTest, IsWhereTheProgressOfARunGoes)
{
    const Dock dock(Address());
    ASSERT_TRUE(dock.IsListening());
    const DesktopPorts ports;

    ShowTaskbarProgress(0.5);

    EXPECT_TRUE(QTest::qWaitFor([&dock] { return !dock.updates.empty(); }, patience));
    EXPECT_THAT(dock.updates, ElementsAre("application://tessarine.desktop: 0.5 shown"));
}

}  // namespace

}  // namespace tessarine
