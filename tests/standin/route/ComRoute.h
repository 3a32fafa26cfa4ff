#pragma once

#include <memory>

#include "standin/CallWatch.h"

namespace tessarine::standin
{

/// Lets what arrives at the stand-ins be seen, from the next application on; null for nobody. The calls come on threads
/// of the system, while the one that made them waits.
void WatchRoute(std::shared_ptr<CallWatch> watch);

}  // namespace tessarine::standin
