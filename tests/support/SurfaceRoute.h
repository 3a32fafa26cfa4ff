#pragma once

#include <functional>
#include <memory>

#include "model/PowerPoint.h"

namespace tessarine
{

/// The way by which code under test reaches a stand-in that lives in the test itself: a provider in front of another
/// one, whose calls arrive there.
using SurfaceRoute =
    std::function<std::shared_ptr<powerpoint::Provider>(std::shared_ptr<powerpoint::Provider> destination)>;

/// Puts a route for the rest of the process. Without one, code under test gets the stand-in itself.
void SetSurfaceRoute(SurfaceRoute route);

/// What code under test is to be given in place of a stand-in.
std::shared_ptr<powerpoint::Provider> Routed(std::shared_ptr<powerpoint::Provider> standIn);
std::shared_ptr<powerpoint::Presentation> Routed(std::shared_ptr<powerpoint::Presentation> standIn);

}  // namespace tessarine
