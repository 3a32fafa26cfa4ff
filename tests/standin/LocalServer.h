#pragma once

#include <functional>
#include <memory>

#include "standin/CallWatch.h"
#include "standin/Program.h"
#include "standin/ServedObject.h"

namespace tessarine::standin
{

/// Makes the application that a server hands out. `quit` is to be called when it is quit.
using MakeApplication = std::function<Reference<IDispatch>(std::function<void()> quit)>;

/// A process that serves one application of a program. It is a server for a single use, because systems differ in how
/// long they remember a server for many that was killed; where the program has one instance alone, a second process
/// passes on the application of the first.
///
/// Runs until the application is quit, or for two minutes without that, so that no process outlives a broken test.
/// Gives the process's exit status.
int ServeUntilQuit(const Program& program, const std::shared_ptr<CallWatch>& watch, const MakeApplication& make);

}  // namespace tessarine::standin
