#include "ui/run/QtTimer.h"

#include <gtest/gtest.h>

#include <QTest>

#include "run/TimerX.h"

namespace tessarine
{
namespace
{

class QtTimerTest : public testing::Test
{
protected:
    ~QtTimerTest() override { SetSystemTimer(previous_); }

    SystemTimerPort previous_ = UseQtTimers();
    int ticks_ = 0;
    const TimerCallback count_ = [this](TimerIdentifier) { ++ticks_; };
};

TEST_F(QtTimerTest, TicksAgainAndAgainWhereEventsAreDelivered)
{
    TimerX timer;
    timer.Timer += [this] { ++ticks_; };
    timer.Interval = 1;
    timer.PutEnabled(true);

    EXPECT_TRUE(QTest::qWaitFor([this] { return ticks_ >= 3; }));

    timer.PutEnabled(false);
    const int ticks = ticks_;
    QTest::qWait(50);
    EXPECT_EQ(ticks_, ticks);
}

TEST_F(QtTimerTest, NumbersItsTimers)
{
    const TimerIdentifier first = SetTimer(0, 1000, count_);
    const TimerIdentifier second = SetTimer(0, 1000, count_);

    EXPECT_NE(first, 0u);
    EXPECT_NE(second, 0u);
    EXPECT_NE(first, second);
}

TEST_F(QtTimerTest, BeginsARunningTimerAnew)
{
    const TimerIdentifier timer = SetTimer(0, 1'000'000, [](TimerIdentifier) { FAIL() << "the old callback"; });

    EXPECT_EQ(SetTimer(timer, 1, count_), timer);

    EXPECT_TRUE(QTest::qWaitFor([this] { return ticks_ >= 2; }));
}

TEST_F(QtTimerTest, MayBeStoppedByItsOwnTick)
{
    SetTimer(0, 1, [this](TimerIdentifier identifier) {
        ++ticks_;
        KillTimer(identifier);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });

    EXPECT_TRUE(QTest::qWaitFor([this] { return ticks_ >= 1; }));
    QTest::qWait(50);
    EXPECT_EQ(ticks_, 1);
}

TEST_F(QtTimerTest, IgnoresAnUnknownTimer)
{
    KillTimer(12345);

    EXPECT_NE(SetTimer(12345, 1, count_), 0u);
    EXPECT_TRUE(QTest::qWaitFor([this] { return ticks_ >= 1; }));
}

}  // namespace
}  // namespace tessarine
