#include "support/Deliveries.h"

#include <utility>

namespace tessarine
{

Deliveries::Deliveries()
{
    previousEvents_ = SetDeliverPendingEvents([this] { Deliver(); });
    previousSleep_ = SetSleep([this](std::chrono::milliseconds time) { slept_ += time; });
}

Deliveries::~Deliveries()
{
    SetSleep(previousSleep_);
    SetDeliverPendingEvents(previousEvents_);
}

void Deliveries::Deliver()
{
    ++count_;
    if (std::exchange(slept_, {}) == std::chrono::milliseconds(1))
        ++afterASleep_;
    if (failure_)
        throw *failure_;
}

void Deliveries::Fail(std::int32_t number)
{
    failure_ = Failure(number, u"delivery");
}

}  // namespace tessarine
