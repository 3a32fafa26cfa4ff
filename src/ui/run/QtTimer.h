#pragma once

#include "platform/SystemTimer.h"

namespace tessarine
{

/// Makes Qt's timers the system's, and gives back the port that was in force. A timer ticks on the thread that set it,
/// where events are delivered, and at most 100 times a second whatever its interval. The application object must be
/// there, and outlive every timer.
SystemTimerPort UseQtTimers();

}  // namespace tessarine
