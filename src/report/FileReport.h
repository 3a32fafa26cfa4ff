#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "engine/CounterStatus.h"
#include "engine/Hit.h"
#include "platform/String.h"
#include "report/Engine.h"

namespace tessarine
{

class CounterStatuses;

/// One pair in one file.
struct PairReport {
    String find;
    String replace;
    /// Occurrences, in the order of SearchLocations; -1 where the pair was not looked for.
    CounterStatus::LocationCounts counts{};

    std::int64_t Occurrences() const;  ///< Sum of the counts above 0.
};

/// What became of a file in a replace run, which the counts alone don't tell.
enum class ReportedState { Changed, CountedOnly, Unchanged, Failed };

/// The one line that a file gets.
struct FileReport {
    String path;
    std::int32_t status = FileStatus::NotProcessed;  ///< A FileStatus.
    String error;                                    ///< Why the file failed; empty otherwise.
    std::vector<PairReport> pairs;   ///< Empty for a failed file: what was counted before the failure is not known.
    std::vector<String> warnings{};  ///< What did not go quite as asked, a sentence each.

    /// The hits in the order of the run, as many as whoever made the report keeps of a file. Empty for a failed file,
    /// and where nobody asked for hits.
    std::vector<Hit> hits{};
    std::int64_t hitsLeftOut = 0;  ///< Further hits that were found and not kept.

    /// Its place in the whole job, from 1, where the run takes one share of the job's files; else 0.
    std::int64_t number = 0;

    /// Whether the file has other content than before; nothing in a find, and where the run can't tell.
    std::optional<bool> hasNewContent{};

    std::int64_t Occurrences() const;  ///< Of all pairs together.

    /// Changed and CountedOnly are told apart by the content where the run tells of it; where it does not, a file with
    /// a count is taken for changed. A file may be changed without a count, as by a footer.
    ReportedState State() const;
};

/// The state in words, for people and programs alike: "changed", "counted, nothing could be changed", "unchanged" or
/// "failed"; of a find "found", "nothing found" or "failed".
std::string_view StateText(const FileReport& file, bool replaces);

/// The report of a file that has no result. The error stands beside the path and so doesn't repeat it.
FileReport FailedFile(const String& path, const String& error);

/// What the run handed over for the file at `path`.
FileReport ReportOf(const String& path, const CounterStatuses& result);

/// What the lines of a report add up to.
struct RunSummary {
    std::int64_t files = 0;        ///< With or without a result.
    std::int64_t changed = 0;      ///< Files that were changed; in a find, those with a count.
    std::int64_t countedOnly = 0;  ///< Files with a count in which nothing could be changed.
    std::int64_t unchanged = 0;    ///< All others that did not fail.
    std::int64_t failed = 0;
    std::int64_t occurrences = 0;           ///< Of the changed files.
    std::int64_t skippedLinks = 0;          ///< Links to folders that the search for files did not follow.
    std::int64_t notReached = 0;            ///< Files that a run left out because it ended early; not among `files`.
    std::optional<std::int64_t> seconds{};  ///< How long the run took, where that is known.
    std::optional<Engine> engine{};         ///< What processed the files, where that is told.
    std::vector<String> warnings{};         ///< What did not go quite as asked and belongs to no file, a sentence each.

    /// Nothing was counted anywhere, and nothing was changed.
    bool IsWithoutHits() const { return changed == 0 && countedOnly == 0; }

    void Add(const FileReport& file);
};

}  // namespace tessarine
