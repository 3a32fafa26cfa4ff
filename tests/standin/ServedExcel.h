#pragma once

#include <functional>
#include <memory>

#include "model/Excel.h"
#include "standin/ServedObject.h"

namespace tessarine::standin
{

/// An application of the surface for list files under the names of Excel's object model. A text that is put is taken
/// without the apostrophe in front of it, and makes it fail without one: Excel would take it for what it looks like.
///
/// `quit` is called by Quit, after the application behind has been quit.
Reference<IDispatch> ServeExcel(std::shared_ptr<CallWatch> watch, std::shared_ptr<excel::Application> application,
                                std::function<void()> quit);

}  // namespace tessarine::standin
