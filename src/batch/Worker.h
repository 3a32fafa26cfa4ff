#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "batch/BatchCall.h"
#include "batch/ReportJson.h"
#include "model/Engines.h"

namespace tessarine::batch
{

/// The first argument of a worker (WorkerRun.h), before those of the call that it works for. Not for people: a worker
/// without a run to work for ends at once.
inline constexpr std::string_view WorkerArgument = "--worker";

/// What a worker knows of the run that it works for: messages on standard input and standard output
/// (WorkerMessages.h), which must be used for nothing else.
class RunOfWorker
{
public:
    std::optional<std::string> NextMessage();

    /// Says an object of one key. A run that doesn't hear it has ended, which the next message tells.
    void Say(const char* key, Json value);
};

/// Takes files through a run of its own, as `call` asks for, one for each message, until no more come. Always with the
/// built-in engine. Gives the exit status.
int Work(const BatchCall& call, const Engines& engines, RunOfWorker& forRun);

}  // namespace tessarine::batch
