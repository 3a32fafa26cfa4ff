#include "run/TimerX.h"

#include <gmock/gmock.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/Failure.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

/// Timers whose ticks the test gives.
class TimerXTest : public testing::Test
{
protected:
    TimerXTest()
    {
        previous_ = SetSystemTimer(
            {[this](TimerIdentifier identifier, std::int32_t interval, TimerCallback callback) {
                 calls_.push_back("set " + std::to_string(identifier) + " every " + std::to_string(interval));
                 if (identifier == 0)
                     identifier = nextIdentifier_++;
                 callbacks_[identifier] = std::move(callback);
                 return identifier;
             },
             [this](TimerIdentifier identifier) { calls_.push_back("kill " + std::to_string(identifier)); }});
        timer_->Timer += [this] { ++ticks_; };
    }
    ~TimerXTest() override
    {
        timer_.reset();
        SetSystemTimer(previous_);
    }

    void Start(TimerX& timer, std::int32_t interval = 1)
    {
        timer.Interval = interval;
        timer.PutEnabled(true);
    }

    /// The system calls back, whether or not the timer still runs.
    void Tick(TimerIdentifier identifier) { callbacks_.at(identifier)(identifier); }

    std::vector<std::string> calls_;
    std::map<TimerIdentifier, TimerCallback> callbacks_;
    TimerIdentifier nextIdentifier_ = 7;
    SystemTimerPort previous_;
    std::unique_ptr<TimerX> timer_ = std::make_unique<TimerX>();
    int ticks_ = 0;
};

TEST_F(TimerXTest, IsStoppedAtFirst)
{
    EXPECT_FALSE(timer_->Enabled());
    EXPECT_EQ(timer_->Interval, 0);
    EXPECT_EQ(timer_->Tag, u"");
    EXPECT_THAT(calls_, IsEmpty());
}

TEST_F(TimerXTest, StartsWithTheIntervalWhenEnabled)
{
    timer_->Interval = 250;
    EXPECT_THAT(calls_, IsEmpty());

    timer_->PutEnabled(true);

    EXPECT_TRUE(timer_->Enabled());
    EXPECT_THAT(calls_, ElementsAre("set 0 every 250"));
}

TEST_F(TimerXTest, RaisesItsEventAtEachTick)
{
    Start(*timer_);

    Tick(7);
    Tick(7);

    EXPECT_EQ(ticks_, 2);
}

TEST_F(TimerXTest, StopsWhenDisabledAndIsForgotten)
{
    Start(*timer_);

    timer_->PutEnabled(false);
    Tick(7);

    EXPECT_THAT(calls_, ElementsAre("set 0 every 1", "kill 7"));
    EXPECT_EQ(ticks_, 0);
}

TEST_F(TimerXTest, DoesNothingWhenEnabledOnceMore)
{
    Start(*timer_);

    timer_->Interval = 500;
    timer_->PutEnabled(true);

    EXPECT_THAT(calls_, ElementsAre("set 0 every 1"));
}

TEST_F(TimerXTest, TakesANewIntervalWhenStartedAgain)
{
    Start(*timer_);
    timer_->PutEnabled(false);

    Start(*timer_, 500);

    EXPECT_THAT(calls_, ElementsAre("set 0 every 1", "kill 7", "set 0 every 500"));
    Tick(8);
    EXPECT_EQ(ticks_, 1);
}

TEST_F(TimerXTest, StartsNothingWithoutAnInterval)
{
    Start(*timer_, 0);

    EXPECT_TRUE(timer_->Enabled());
    EXPECT_THAT(calls_, IsEmpty());

    timer_->PutEnabled(false);
    EXPECT_THAT(calls_, IsEmpty());
}

TEST_F(TimerXTest, StartsNothingWithANegativeInterval)
{
    Start(*timer_, -1);

    EXPECT_THAT(calls_, IsEmpty());
}

TEST_F(TimerXTest, StopsARunningTimerWhoseIntervalBecameZero)
{
    Start(*timer_);

    timer_->Interval = 0;
    timer_->PutEnabled(false);
    timer_->PutEnabled(true);

    EXPECT_THAT(calls_, ElementsAre("set 0 every 1", "kill 7"));
}

TEST_F(TimerXTest, StopsWhenDestroyed)
{
    Start(*timer_);

    timer_.reset();
    Tick(7);

    EXPECT_THAT(calls_, ElementsAre("set 0 every 1", "kill 7"));
}

TEST_F(TimerXTest, TellsTimersApartByTheirIdentifiers)
{
    TimerX other;
    int otherTicks = 0;
    other.Timer += [&] { ++otherTicks; };
    Start(*timer_);
    Start(other);

    Tick(8);

    EXPECT_EQ(ticks_, 0);
    EXPECT_EQ(otherTicks, 1);
}

TEST_F(TimerXTest, KeepsAFailureOfAReceiverFromTheSystem)
{
    timer_->Timer += [] { throw Failure(FailureNumber::Overflow, u"Overflow"); };
    Start(*timer_);

    EXPECT_NO_THROW(Tick(7));

    EXPECT_EQ(ticks_, 1);
}

TEST_F(TimerXTest, MayBeDestroyedByItsOwnReceiver)
{
    int later = 0;
    timer_->Timer += [this] { timer_.reset(); };
    timer_->Timer += [&later] { ++later; };
    Start(*timer_);

    Tick(7);

    EXPECT_EQ(timer_, nullptr);
    EXPECT_EQ(later, 1);
}

TEST_F(TimerXTest, RunsNothingWhereThereAreNoTimers)
{
    SetSystemTimer({});

    Start(*timer_);
    timer_->PutEnabled(false);

    EXPECT_FALSE(timer_->Enabled());
    EXPECT_THAT(calls_, IsEmpty());
}

}  // namespace
}  // namespace tessarine
