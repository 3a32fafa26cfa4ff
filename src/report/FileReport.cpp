#include "report/FileReport.h"

#include "engine/CounterStatuses.h"
#include "report/WithoutPath.h"

namespace tessarine
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

ReportedState FileReport::State() const
{
    if (status == FileStatus::NotProcessed)
        return ReportedState::Failed;
    const bool isCounted = status == FileStatus::Counted;
    if (hasNewContent.value_or(isCounted))
        return ReportedState::Changed;
    return isCounted ? ReportedState::CountedOnly : ReportedState::Unchanged;
}

std::string_view StateText(const FileReport& file, bool replaces)
{
    switch (file.State()) {
        case ReportedState::Changed:
            return replaces ? "changed" : "found";
        case ReportedState::CountedOnly:
            return "counted, nothing could be changed";
        case ReportedState::Unchanged:
            return replaces ? "unchanged" : "nothing found";
        case ReportedState::Failed:
            break;
    }
    return "failed";
}

FileReport FailedFile(const String& path, const String& error)
{
    return {path, FileStatus::NotProcessed, WithoutPath(error, path), {}};
}

FileReport ReportOf(const String& path, const CounterStatuses& result)
{
    if (result.FileStausAfterProcess == FileStatus::NotProcessed)
        return FailedFile(path, result.mError);

    FileReport report{path, result.FileStausAfterProcess, {}, {}};
    for (const auto& status : result.NewEnum())
        report.pairs.push_back({status->FindWhat, status->ReplaceWith, status->Counts()});
    report.hasNewContent = result.HasNewContent;
    return report;
}

void RunSummary::Add(const FileReport& file)
{
    ++files;
    switch (file.State()) {
        case ReportedState::Changed:
            ++changed;
            occurrences += file.Occurrences();
            break;
        case ReportedState::CountedOnly:
            ++countedOnly;
            break;
        case ReportedState::Unchanged:
            ++unchanged;
            break;
        case ReportedState::Failed:
            ++failed;
            break;
    }
}

}  // namespace tessarine
