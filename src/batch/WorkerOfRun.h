#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "batch/ReportJson.h"
#include "batch/WorkerProcess.h"

namespace tessarine::batch
{

/// What the workers of a run are started with.
struct WorkerTerms {
    std::vector<std::string> arguments;  ///< Of the call, as it came.
    std::string standardInput;           ///< What a worker reads where the call has it read that.
    Json job;                            ///< What it must understand the call to be (JobJson.h).
    bool replaces = false;
};

/// One worker of a run, from the run's side.
class WorkerOfRun
{
public:
    /// Told of a line for the user.
    using Note = std::function<void(const std::string& line)>;

    /// Starts it and waits until it is ready. Raises why it is not; no file was touched then. Borrows the terms.
    WorkerOfRun(const WorkerTerms& terms, Note note);

    /// What became of a file, and the bytes that it came in.
    struct Answer {
        FileReport report;
        std::size_t bytes = 0;
    };
    /// Has it process a file. Nothing when it ended before it was done; hasBegun tells whether it had begun by then.
    std::optional<Answer> Process(const String& path);
    bool hasBegun() const { return hasBegun_; }

    /// Lets it go, and tells how it ended.
    std::string End();

private:
    std::optional<Json> NextObject(std::size_t& bytes);
    void WaitUntilReady();

    const WorkerTerms& terms_;
    Note note_;
    WorkerProcess process_;
    bool hasBegun_ = false;  // with the last file that was given to it
};

}  // namespace tessarine::batch
