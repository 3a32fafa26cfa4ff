#pragma once

#include <functional>
#include <memory>

#include "model/PowerPoint.h"
#include "standin/ServedObject.h"

namespace tessarine::standin
{

/// An application of the surface under the names of PowerPoint's object model, with all members that the surface has
/// and no others. Presentations that were opened and not closed stay open until it is quit, whoever holds them.
///
/// `quit` is called by Quit, after the application behind has been quit.
Reference<IDispatch> ServePowerPoint(std::shared_ptr<CallWatch> watch,
                                     std::shared_ptr<powerpoint::Application> application, std::function<void()> quit);

}  // namespace tessarine::standin
