#pragma once

#include <cstdint>
#include <ctime>
#include <memory>
#include <vector>

#include "batch/BatchCall.h"
#include "batch/JobFiles.h"
#include "report/RunReportWriter.h"

namespace tessarine::batch
{

class Output;

/// The files of `--report`, which a run keeps its report in, beside the one that it prints.
class KeptReports
{
public:
    /// Whether the run is the one that goes on now, and its times are known.
    enum class Of { ThisRun, EarlierRuns };

    /// Refuses (Refusal.h) a report that would take the place of a file that the call reads: one of `files`, the job,
    /// or a list; also two reports in one file. `pairList` is the list file that the pairs came from, or empty. Raises
    /// what RunReportWriter raises for a file that can't be written.
    KeptReports(const BatchCall& call, const std::vector<JobFile>& files, const String& pairList, Of of = Of::ThisRun);

    void Add(const FileReport& file);

    /// Writes the reports. False when one could not be written, which is told on standard error; the others are
    /// written all the same. `end.seconds` is filled in here.
    bool Finish(RunEnd end, Output& output);

private:
    std::time_t started_;  // 0 where it isn't known
    std::vector<std::unique_ptr<RunReportWriter>> writers_;
};

}  // namespace tessarine::batch
