#include "platform/SystemTimer.h"

#include <utility>

namespace tessarine
{

namespace
{

SystemTimerPort systemTimer;

}  // namespace

SystemTimerPort SetSystemTimer(SystemTimerPort port)
{
    return std::exchange(systemTimer, std::move(port));
}

TimerIdentifier SetTimer(TimerIdentifier identifier, std::int32_t interval, TimerCallback callback)
{
    // 0 stands for no timer: without a port there is none to tick or to stop.
    return systemTimer.setTimer ? systemTimer.setTimer(identifier, interval, std::move(callback)) : 0;
}

void KillTimer(TimerIdentifier identifier)
{
    if (systemTimer.killTimer)
        systemTimer.killTimer(identifier);
}

}  // namespace tessarine
