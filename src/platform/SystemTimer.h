#pragma once

#include <cstdint>
#include <functional>

/// The system's timers, as a port that the composition root sets. A tick comes from the message loop of the one thread,
/// thus only where pending events are delivered.
namespace tessarine
{

using TimerIdentifier = std::uint64_t;  ///< 0 stands for no timer.

/// Called at each tick, with the timer's identifier. It must not raise.
using TimerCallback = std::function<void(TimerIdentifier identifier)>;

struct SystemTimerPort {
    std::function<TimerIdentifier(TimerIdentifier identifier, std::int32_t interval, TimerCallback callback)> setTimer;
    std::function<void(TimerIdentifier identifier)> killTimer;
};

/// Replaces the port and returns the one before. An empty port starts no timers.
SystemTimerPort SetSystemTimer(SystemTimerPort port);

/// Starts a timer that ticks every `interval` milliseconds, and gives its identifier. The identifier of a running timer
/// restarts that timer with the new interval and callback. Gives 0 when no timer could be started.
TimerIdentifier SetTimer(TimerIdentifier identifier, std::int32_t interval, TimerCallback callback);

/// Stops a timer. An identifier that no timer has does nothing.
void KillTimer(TimerIdentifier identifier);

}  // namespace tessarine
