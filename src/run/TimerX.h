#pragma once

#include <cstdint>

#include "model/Event.h"
#include "platform/String.h"
#include "platform/SystemTimer.h"

namespace tessarine
{

/// A timer that raises an event at each tick, on the one thread. It says nothing about the health of PowerPoint.
class TimerX
{
public:
    TimerX() = default;
    ~TimerX();
    TimerX(const TimerX&) = delete;
    TimerX& operator=(const TimerX&) = delete;

    /// Milliseconds. Takes effect at the next change of Enabled; below 1 nothing starts.
    std::int32_t Interval = 0;

    /// A new value starts or stops the timer, the present one does nothing.
    bool Enabled() const { return enabled_; }
    void PutEnabled(bool value);

    String Tag;  ///< Free for the user of the class.

    Event<> Timer;  ///< At each tick. A receiver may destroy the timer.

private:
    void StartOrStop();  // by the interval and whether it is enabled

    bool enabled_ = false;
    TimerIdentifier identifier_ = 0;  // of the system's timer; 0 while the timer is off
};

}  // namespace tessarine
