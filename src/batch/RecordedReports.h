#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "batch/JobFiles.h"
#include "report/FileReport.h"

namespace tessarine::batch
{

class RunRecord;

/// Puts the reports of a run that goes on after its record back into the order of its files: those that the record
/// holds, and those of the files that are still to do.
class RecordedReports
{
public:
    using Sink = std::function<void(const FileReport&)>;

    /// Borrows all of them; a null record holds nothing.
    RecordedReports(const RunRecord* record, const std::vector<JobFile>& files, Sink sink);

    const std::vector<JobFile>& ToDo() const { return isPart_ ? part_ : files_; }
    std::size_t FileOf(std::size_t toDo) const { return isPart_ ? fileOf_[toDo] : toDo; }  ///< Its index among all.

    /// Takes the report of the next file of ToDo.
    void Take(const FileReport& report);

    /// Hands on what is left of the record: after the last report.
    void End();

private:
    void HandOnUpTo(std::size_t file);

    const RunRecord* record_;
    Sink sink_;
    const std::vector<JobFile>& files_;
    bool isPart_;                      // some files are done; else there is no second list of very many files
    std::vector<JobFile> part_;        // the others
    std::vector<std::size_t> fileOf_;  // each of them
    std::size_t taken_ = 0;            // of ToDo
    std::size_t next_ = 0;             // the first file that was not handed on
};

}  // namespace tessarine::batch
