#pragma once

#include "platform/SystemTimer.h"

namespace tessarine
{

/// Makes Qt's timers the system's, and gives the port before. The application object must be there, and outlive every
/// timer.
SystemTimerPort UseQtTimers();

}  // namespace tessarine
