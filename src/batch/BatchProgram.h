#pragma once

#include <memory>

#include "batch/BatchCall.h"
#include "model/PowerPoint.h"

namespace tessarine::batch
{

class Output;

/// How the program ends; the numbers are its exit status.
namespace ExitStatus
{
inline constexpr int Done = 0;        ///< Every file has been dealt with, hits or none.
inline constexpr int FileFailed = 1;  ///< Also: the run was cancelled, or the report could not be written.
inline constexpr int NotValid = 2;    ///< The call or the job is not valid; no file was touched.
}  // namespace ExitStatus

/// Carries out a call and writes its report. `provider` is where the run gets its PowerPoint from.
int Perform(const BatchCall& call, const std::shared_ptr<powerpoint::Provider>& provider, Output& output);

}  // namespace tessarine::batch
