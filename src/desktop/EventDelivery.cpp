#include "desktop/EventDelivery.h"

#include <utility>

#include <QCoreApplication>

namespace tessarine
{

EventDelivery::EventDelivery(Clock clock) : clock_(std::move(clock)) {}

void EventDelivery::Deliver()
{
    if (!last_ || clock_() - *last_ >= Between)
        DeliverAtOnce();
}

void EventDelivery::DeliverAtOnce()
{
    last_ = clock_();  // a tick that is delivered asks for delivery itself
    QCoreApplication::processEvents();
    last_ = clock_();
}

}  // namespace tessarine
