#include "platform/MessageLoopTimers.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>

#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

/// Has the thread deliver its messages until something has come, or for ten seconds at most.
template <class Condition>
bool DeliverUntil(Condition condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition() && std::chrono::steady_clock::now() < end) {
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return condition();
}

class WindowsTimers : public testing::Test
{
protected:
    WindowsTimers() : before_(SetSystemTimer(MessageLoopTimers())) {}
    ~WindowsTimers() override { SetSystemTimer(before_); }

private:
    SystemTimerPort before_;
};

}  // namespace

TEST_F(WindowsTimers, TickAgainAndAgainWhileMessagesAreDelivered)
{
    int ticks = 0;
    TimerIdentifier told = 0;
    const TimerIdentifier timer = SetTimer(0, 1, [&](TimerIdentifier identifier) {
        ++ticks;
        told = identifier;
    });

    EXPECT_NE(timer, 0u);
    EXPECT_TRUE(DeliverUntil([&] { return ticks >= 3; }));
    EXPECT_EQ(told, timer);
    KillTimer(timer);
}

TEST_F(WindowsTimers, AreSilentOnceTheyAreStopped)
{
    int ticks = 0;
    int others = 0;
    const TimerIdentifier timer = SetTimer(0, 1, [&](TimerIdentifier) { ++ticks; });
    const TimerIdentifier other = SetTimer(0, 1, [&](TimerIdentifier) { ++others; });
    ASSERT_TRUE(DeliverUntil([&] { return ticks > 0; }));

    KillTimer(timer);
    const int before = ticks;
    others = 0;

    EXPECT_TRUE(DeliverUntil([&] { return others >= 3; }));
    EXPECT_EQ(ticks, before);
    KillTimer(other);
    KillTimer(other);
}

TEST_F(WindowsTimers, TakeANewIntervalAndCallback)
{
    int first = 0;
    int second = 0;
    const TimerIdentifier timer = SetTimer(0, 100'000, [&](TimerIdentifier) { ++first; });

    const TimerIdentifier again = SetTimer(timer, 1, [&](TimerIdentifier) { ++second; });

    EXPECT_TRUE(DeliverUntil([&] { return second > 0; }));
    EXPECT_EQ(first, 0);
    KillTimer(again);
}

TEST_F(WindowsTimers, LetNothingThroughThatACallbackRaises)
{
    int ticks = 0;
    const TimerIdentifier timer = SetTimer(0, 1, [&](TimerIdentifier) {
        ++ticks;
        throw std::runtime_error("a tick");
    });

    EXPECT_TRUE(DeliverUntil([&] { return ticks >= 2; }));
    KillTimer(timer);
}

TEST_F(WindowsTimers, MayBeStoppedByTheirOwnTick)
{
    int ticks = 0;
    SetTimer(0, 1, [&](TimerIdentifier identifier) {
        ++ticks;
        KillTimer(identifier);
    });
    int others = 0;
    const TimerIdentifier other = SetTimer(0, 1, [&](TimerIdentifier) { ++others; });

    EXPECT_TRUE(DeliverUntil([&] { return others >= 3; }));
    EXPECT_EQ(ticks, 1);
    KillTimer(other);
}

}  // namespace tessarine
