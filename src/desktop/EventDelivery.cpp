#include "desktop/EventDelivery.h"

#include <utility>

#include <QCoreApplication>

namespace tessarine
{

EventDelivery::EventDelivery(Clock clock) : clock_(std::move(clock)) {}

void EventDelivery::Deliver()
{
    const TimePoint now = clock_();
    if (last_ && now - *last_ < Between)
        return;
    last_ = now;  // a tick that is delivered asks for delivery itself
    QCoreApplication::processEvents();
    last_ = clock_();
}

}  // namespace tessarine
