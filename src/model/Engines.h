#pragma once

#include <memory>

#include "model/PowerPoint.h"

namespace tessarine
{

/// What can process presentations here.
struct Engines {
    std::shared_ptr<powerpoint::Provider> builtIn;               ///< The engine that comes with the program.
    std::shared_ptr<powerpoint::Provider> powerPoint = nullptr;  ///< Null on systems that have no PowerPoint.
};

}  // namespace tessarine
