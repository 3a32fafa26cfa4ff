#pragma once

#include <cstdint>
#include <string>

namespace tessarine::batch
{

/// How far a command is that goes through files.
struct ProgressOfRun {
    std::int64_t done = 0;  ///< Files that have been dealt with; the next one is in work.
    std::int64_t files = 0;
    std::int64_t failed = 0;   ///< Of those that are done.
    std::int64_t seconds = 0;  ///< Since the first one began.
};

/// What stands before the path of the file in work: "[121/400] 30%, 2 failed, 1:05 left". Failures are told where there
/// are any, the time left once there is something to go by: after three files and two seconds.
std::string ProgressText(const ProgressOfRun& progress);

}  // namespace tessarine::batch
