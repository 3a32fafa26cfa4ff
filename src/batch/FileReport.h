#pragma once

#include <cstdint>
#include <vector>

#include "engine/CounterStatus.h"
#include "platform/String.h"

namespace tessarine
{
class CounterStatuses;
}

namespace tessarine::batch
{

/// One pair in one file.
struct PairReport {
    String find;
    String replace;
    /// Occurrences, in the order of SearchLocations; -1 where the pair was not looked for.
    CounterStatus::LocationCounts counts{};

    std::int64_t Occurrences() const;  ///< Sum of the counts above 0.
};

/// The one line that a file gets.
struct FileReport {
    String path;
    std::int32_t status = FileStatus::NotProcessed;  ///< A FileStatus.
    String error;                                    ///< Why the file failed; empty otherwise.
    std::vector<PairReport> pairs;   ///< Empty for a failed file: what was counted before the failure is not known.
    std::vector<String> warnings{};  ///< What did not go quite as asked, a sentence each.

    std::int64_t Occurrences() const;  ///< Of all pairs together.
};

/// The report of a file that has no result.
FileReport FailedFile(const String& path, const String& error);

/// What the run handed over for the file at `path`.
FileReport ReportOf(const String& path, const CounterStatuses& result);

/// What the lines of a report add up to.
struct RunSummary {
    std::int64_t files = 0;      ///< With or without a result.
    std::int64_t changed = 0;    ///< Files in which something was counted.
    std::int64_t unchanged = 0;  ///< Files in which nothing was counted.
    std::int64_t failed = 0;
    std::int64_t occurrences = 0;   ///< Of the changed files.
    std::int64_t skippedLinks = 0;  ///< Links to folders that the search for files did not follow.

    void Add(const FileReport& file);
};

}  // namespace tessarine::batch
