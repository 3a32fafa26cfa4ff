#include "desktop/EventDelivery.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QTimer>

namespace tessarine
{
namespace
{

using namespace std::chrono_literals;

/// A clock that stands until the test moves it, and events that count when they are delivered.
class EventDeliveryTest : public testing::Test
{
protected:
    ~EventDeliveryTest() override { QCoreApplication::processEvents(); }  // what is pending counts here

    void PostEvent(std::function<void()> act = [] {})
    {
        QMetaObject::invokeMethod(
            qApp,
            [this, act = std::move(act)] {
                ++delivered;
                act();
            },
            Qt::QueuedConnection);
    }

    EventDelivery::TimePoint now;
    EventDelivery delivery{[this] { return now; }};
    int delivered = 0;
};

TEST_F(EventDeliveryTest, DeliversAtItsFirstCall)
{
    PostEvent();

    delivery.Deliver();

    EXPECT_EQ(delivered, 1);
}

TEST_F(EventDeliveryTest, LetsEventsWaitForAMoment)
{
    delivery.Deliver();
    PostEvent();

    now += 59ms;
    delivery.Deliver();
    EXPECT_EQ(delivered, 0);

    now += 1ms;
    delivery.Deliver();
    EXPECT_EQ(delivered, 1);
}

TEST_F(EventDeliveryTest, CountsTheMomentFromTheEndOfADelivery)
{
    PostEvent([this] { now += 10s; });
    delivery.Deliver();
    PostEvent();

    now += 59ms;
    delivery.Deliver();

    EXPECT_EQ(delivered, 1);
}

TEST_F(EventDeliveryTest, LetsNothingWaitWhenItIsToDeliverAtOnce)
{
    delivery.Deliver();
    PostEvent();

    delivery.DeliverAtOnce();

    EXPECT_EQ(delivered, 1);
}

TEST_F(EventDeliveryTest, CountsTheMomentFromADeliveryAtOnceToo)
{
    delivery.DeliverAtOnce();
    PostEvent();

    now += 59ms;
    delivery.Deliver();

    EXPECT_EQ(delivered, 0);
}

TEST_F(EventDeliveryTest, DoesNotDeliverAgainFromWhatItDelivers)
{
    PostEvent([this] {
        PostEvent();
        delivery.Deliver();
        EXPECT_EQ(delivered, 1);
    });

    delivery.Deliver();
}

}  // namespace
}  // namespace tessarine
