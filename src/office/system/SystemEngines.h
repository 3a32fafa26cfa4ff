#pragma once

#include "model/Engines.h"
#include "saving/SaveTerms.h"

namespace tessarine
{

/// The engines that this system has. `terms` are those of the built-in one.
Engines SystemEngines(const SaveTerms& terms = {});

}  // namespace tessarine
