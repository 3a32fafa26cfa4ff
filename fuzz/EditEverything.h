#pragma once

#include "model/PowerPoint.h"

namespace tessarine::fuzz
{

/// Every location of a presentation read and edited through the automation surface; what refuses is passed over.
void EditEverything(powerpoint::Presentation& presentation);

}  // namespace tessarine::fuzz
