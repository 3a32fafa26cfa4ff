#pragma once

#include <memory>

#include "model/PowerPoint.h"

namespace tessarine::windows
{

/// An installed PowerPoint behind the automation surface: its members are called by their names, out of process.
///
/// - Failures have the number that PowerPoint or the system gives, as Visual Basic shows it. Every code that tells that
///   PowerPoint has gone comes as `ServerGone` or `RemoteCallFailed`.
/// - While a call waits, events are delivered (DeliverPendingEvents). While PowerPoint is too busy for it, the call is
///   made again.
/// - Attaching takes any running instance, also the user's.
/// - All objects are used on one thread.
std::shared_ptr<powerpoint::Provider> CreatePowerPointProvider();

}  // namespace tessarine::windows
