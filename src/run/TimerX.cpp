#include "run/TimerX.h"

#include <memory>
#include <string>

#include "log/Treatments.h"
#include "model/KeyedCollection.h"

namespace tessarine
{

namespace
{

/// The running timers of the process: a callback gets an identifier only. They are borrowed.
KeyedCollection<TimerX>& RunningTimers()
{
    static KeyedCollection<TimerX> timers;
    return timers;
}

String KeyOf(TimerIdentifier identifier)
{
    return FromUtf8(std::to_string(identifier) + "_");
}

void Tick(TimerIdentifier identifier)
{
    // Nothing may travel into the system's message loop, nor is a tick that fails worth a line each millisecond.
    Skip([&] {
        const Event<> event = RunningTimers().Item(KeyOf(identifier))->Timer;  // outlives the timer
        event.Raise();
    });
}

}  // namespace

TimerX::~TimerX()
{
    // A destructor can't pass on a failure.
    Skip([this] { PutEnabled(false); });
}

void TimerX::PutEnabled(bool value)
{
    if (value == enabled_)
        return;
    enabled_ = value;
    StartOrStop();
}

void TimerX::StartOrStop()
{
    if (Interval >= 1 && enabled_) {
        // The system is asked for the same timer with another interval; only a new one is added to the list.
        const TimerIdentifier running = identifier_;
        identifier_ = SetTimer(running, Interval, Tick);
        if (running == 0 && identifier_ != 0)
            RunningTimers().Add(std::shared_ptr<TimerX>(std::shared_ptr<void>(), this), KeyOf(identifier_));
    } else if (identifier_ != 0) {
        KillTimer(identifier_);
        RunningTimers().Remove(KeyOf(identifier_));
        identifier_ = 0;
    }
}

}  // namespace tessarine
