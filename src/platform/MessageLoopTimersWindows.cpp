#include "platform/MessageLoopTimers.h"

#include <map>
#include <utility>

#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

/// The system hands its callback nothing but the identifier.
std::map<TimerIdentifier, TimerCallback>& Callbacks()
{
    static std::map<TimerIdentifier, TimerCallback> callbacks;
    return callbacks;
}

void CALLBACK OnTick(HWND, UINT, UINT_PTR identifier, DWORD)
{
    // Nothing may travel into the system's message loop.
    try {
        const auto found = Callbacks().find(identifier);
        if (found == Callbacks().end())
            return;
        const TimerCallback callback = found->second;  // outlives the timer, which it may stop
        callback(identifier);
    } catch (...) {
    }
}

TimerIdentifier Start(TimerIdentifier identifier, std::int32_t interval, TimerCallback callback)
{
    const TimerIdentifier started = ::SetTimer(nullptr, identifier, static_cast<UINT>(interval), &OnTick);
    if (started == 0)
        return 0;
    // The system may give a restarted timer another number.
    if (started != identifier)
        Callbacks().erase(identifier);
    Callbacks()[started] = std::move(callback);
    return started;
}

void Stop(TimerIdentifier identifier)
{
    if (Callbacks().erase(identifier) > 0)
        ::KillTimer(nullptr, identifier);
}

}  // namespace

SystemTimerPort MessageLoopTimers()
{
    return {&Start, &Stop};
}

}  // namespace tessarine
