#include "desktop/DesktopPorts.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "platform/Messages.h"
#include "platform/SystemTimer.h"
#include "shell/TaskbarProgress.h"

namespace tessarine
{
namespace
{

constexpr int patience = 30'000;  // milliseconds

TEST(DesktopPorts, ShowMessagesInABox)
{
    const DesktopPorts ports;
    QString text;
    std::function<void()> press = [&] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) {
            QTimer::singleShot(0, qApp, press);  // not up yet
            return;
        }
        text = box->text();
        QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
    };
    QTimer::singleShot(0, qApp, press);

    const MessageAnswer answer = ShowMessage(u"Sure?", MessageIcon::Question, MessageButtons::YesNo);

    EXPECT_EQ(answer, MessageAnswer::No);
    EXPECT_EQ(text, "Sure?");
}

TEST(DesktopPorts, DeliverPendingEvents)
{
    const DesktopPorts ports;
    bool isDelivered = false;
    QMetaObject::invokeMethod(
        qApp, [&] { isDelivered = true; }, Qt::QueuedConnection);

    DeliverPendingEvents();

    EXPECT_TRUE(isDelivered);
}

TEST(DesktopPorts, DeliverAtOnceWhatCameRightAfterADelivery)
{
    const DesktopPorts ports;
    DeliverPendingEvents();
    bool isDelivered = false;
    QMetaObject::invokeMethod(
        qApp, [&] { isDelivered = true; }, Qt::QueuedConnection);

    DeliverPendingEvents(Delivery::AtOnce);

    EXPECT_TRUE(isDelivered);
}

TEST(DesktopPorts, GiveThePointerItsShape)
{
    const DesktopPorts ports;

    SetMousePointer(MousePointer::Hourglass);
    SetMousePointer(MousePointer::Hourglass);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);

    SetMousePointer(MousePointer::Default);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(DesktopPorts, LetTimersTick)
{
    const SystemTimerPort before = SetSystemTimer({});
    const DesktopPorts ports;
    int ticks = 0;

    const TimerIdentifier timer = SetTimer(0, 1, [&ticks](TimerIdentifier) { ++ticks; });

    EXPECT_NE(timer, 0u);
    EXPECT_TRUE(QTest::qWaitFor([&ticks] { return ticks >= 2; }, patience));
    KillTimer(timer);
    SetSystemTimer(before);
}

TEST(DesktopPorts, LeaveNoReceiversBehind)
{
    {
        const DesktopPorts ports;
        SetMousePointer(MousePointer::Default);
    }
    bool isDelivered = false;
    QMetaObject::invokeMethod(
        qApp, [&] { isDelivered = true; }, Qt::QueuedConnection);

    EXPECT_EQ(ShowMessage(u"Nobody sees this", MessageIcon::None), MessageAnswer::Ok);
    DeliverPendingEvents();
    DeliverPendingEvents(Delivery::AtOnce);
    SetMousePointer(MousePointer::Hourglass);

    EXPECT_FALSE(isDelivered);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_FALSE(SetTaskbarProgress({}));
    QCoreApplication::processEvents();  // while what is pending can still be reached
}

}  // namespace
}  // namespace tessarine
