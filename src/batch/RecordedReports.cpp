#include "batch/RecordedReports.h"

#include <utility>

#include "batch/RunRecord.h"

namespace tessarine::batch
{

RecordedReports::RecordedReports(const RunRecord* record, const std::vector<JobFile>& files, Sink sink)
    : record_(record), sink_(std::move(sink)), files_(files), isPart_(record && record->HasDone())
{
    for (std::size_t file = 0; isPart_ && file < files.size(); ++file) {
        if (record->IsDone(file))
            continue;
        part_.push_back(files[file]);
        fileOf_.push_back(file);
    }
}

void RecordedReports::Take(const FileReport& report)
{
    const std::size_t file = FileOf(taken_++);
    HandOnUpTo(file);
    sink_(report);
    next_ = file + 1;
}

void RecordedReports::End()
{
    HandOnUpTo(files_.size());
}

void RecordedReports::HandOnUpTo(std::size_t file)
{
    for (; next_ < file; ++next_) {
        if (record_ && record_->IsDone(next_))
            sink_(record_->ReportOf(next_));
    }
}

}  // namespace tessarine::batch
