#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "batch/JobFiles.h"
#include "batch/ReportedRun.h"

namespace tessarine::batch
{

class PreparedRun;

/// A prepared run in this process: ReportedRun with the backups, the hits and the mode that the call asks for.
class OwnRun
{
public:
    /// Borrows the run, which is to have one of these alone.
    OwnRun(PreparedRun& run, ReportedRun::Sink sink);
    ~OwnRun();
    OwnRun(const OwnRun&) = delete;
    OwnRun& operator=(const OwnRun&) = delete;

    /// As those of ReportedRun.
    std::function<bool(std::size_t file)> Started;
    std::function<bool()> CancelRequested;

    /// Takes files through the run; may be called again for further ones. Returns the number of files that a cancel
    /// left without a report.
    std::size_t Run(const std::vector<JobFile>& files);

private:
    class Backups;

    std::unique_ptr<Backups> backups_;
    ReportedRun run_;
};

}  // namespace tessarine::batch
