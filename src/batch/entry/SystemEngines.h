#pragma once

#include "batch/EngineOfRun.h"

namespace tessarine::batch
{

/// The engines that this system has. `terms` are those of the built-in one.
Engines SystemEngines(const SaveTerms& terms);

}  // namespace tessarine::batch
