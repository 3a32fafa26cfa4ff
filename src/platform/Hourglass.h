#pragma once

#include "platform/Messages.h"

namespace tessarine
{

/// Shows the hourglass while it lives.
class Hourglass
{
public:
    Hourglass() { SetMousePointer(MousePointer::Hourglass); }
    ~Hourglass() { SetMousePointer(MousePointer::Default); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
};

}  // namespace tessarine
