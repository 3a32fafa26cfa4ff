#include "batch/FileReport.h"

#include "engine/CounterStatuses.h"

namespace tessarine::batch
{

std::int64_t PairReport::Occurrences() const
{
    // In 64 bits: counts of 32 bits each add up to more.
    std::int64_t sum = 0;
    for (const std::int32_t count : counts)
        // A place that was not searched has -1.
        sum += count > 0 ? count : 0;
    return sum;
}

std::int64_t FileReport::Occurrences() const
{
    std::int64_t sum = 0;
    for (const PairReport& pair : pairs)
        sum += pair.Occurrences();
    return sum;
}

FileReport FailedFile(const String& path, const String& error)
{
    return {path, FileStatus::NotProcessed, error, {}};
}

FileReport ReportOf(const String& path, const CounterStatuses& result)
{
    if (result.FileStausAfterProcess == FileStatus::NotProcessed)
        return FailedFile(path, result.mError);

    FileReport report{path, result.FileStausAfterProcess, {}, {}};
    for (const auto& status : result.NewEnum())
        report.pairs.push_back({status->FindWhat, status->ReplaceWith, status->Counts()});
    return report;
}

void RunSummary::Add(const FileReport& file)
{
    ++files;
    if (file.status == FileStatus::Counted) {
        ++changed;
        occurrences += file.Occurrences();
    } else if (file.status == FileStatus::NothingCounted) {
        ++unchanged;
    } else {
        ++failed;
    }
}

}  // namespace tessarine::batch
