#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/Failure.h"
#include "platform/Messages.h"

namespace tessarine
{

/// While it lives the deliveries of pending events are counted in place of being made, and no sleep takes time.
class Deliveries
{
public:
    Deliveries();
    ~Deliveries();
    Deliveries(const Deliveries&) = delete;
    Deliveries& operator=(const Deliveries&) = delete;

    std::size_t Count() const { return count_; }

    /// How many of them followed a sleep of 1 millisecond, which is what YieldWithSleep makes of them.
    std::size_t AfterASleep() const { return afterASleep_; }

    /// Every delivery fails with this number from now on.
    void Fail(std::int32_t number);

private:
    void Deliver();

    std::size_t count_ = 0;
    std::size_t afterASleep_ = 0;
    std::chrono::milliseconds slept_{};  // since the last delivery
    std::optional<Failure> failure_;
    PendingEventsPort previousEvents_;
    SleepPort previousSleep_;
};

}  // namespace tessarine
