#pragma once

#include "platform/SystemTimer.h"

namespace tessarine
{

/// The timers of Windows for SetSystemTimer: `SetTimer` and `KillTimer` without a window. Ticks come while the thread
/// that started a timer delivers its messages. What a callback raises goes no further. Only on Windows.
SystemTimerPort MessageLoopTimers();

}  // namespace tessarine
