#pragma once

#include "batch/BatchCall.h"
#include "batch/EngineOfRun.h"

namespace tessarine::batch
{

class Output;

/// How the program ends; the numbers are its exit status.
namespace ExitStatus
{
inline constexpr int Done = 0;          ///< Every file has been dealt with, hits or none.
inline constexpr int FileFailed = 1;    ///< Also: the run was cancelled, or the report could not be written.
inline constexpr int NotValid = 2;      ///< The call or the job is not valid; no file was touched.
inline constexpr int NothingFound = 3;  ///< Done without a single hit, where the call asks for it.
}  // namespace ExitStatus

/// Carries out a call and writes its report. `engines` are what a run may use.
int Perform(const BatchCall& call, const Engines& engines, Output& output);

}  // namespace tessarine::batch
