#pragma once

#include <string>
#include <vector>

#include "platform/String.h"

namespace tessarine::batch
{

/// The line, with its end, that a process says when it ends at once while it has these files in hand.
std::string LineAtTheEnd(const std::vector<String>& inHand);

}  // namespace tessarine::batch
