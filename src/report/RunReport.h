#pragma once

#include <cstdint>
#include <ctime>
#include <memory>
#include <optional>
#include <string>

#include "platform/String.h"
#include "report/Engine.h"
#include "report/FileReport.h"
#include "report/ReportWords.h"

namespace tessarine
{

/// What is known of a run before its first file.
struct RunFacts {
    bool replaces = false;    ///< Else it only finds.
    bool isDryRun = false;    ///< A replace run that saves nothing.
    std::time_t started = 0;  ///< When it began; 0 where that isn't told.
    String job = {};          ///< The project file that it was run from; empty for none.
};

/// What became of a file of the run, in words.
String StateWord(const FileReport& file, const RunFacts& facts, const ReportWords& words);

/// What is known of a run only when it is over.
struct RunEnd {
    enum class Way {
        Complete,
        Cancelled,  ///< By the user.
        BrokenOff,  ///< By a failure that belongs to no file.
    };
    Way way = Way::Complete;
    std::int64_t notReached = 0;            ///< Files that a run left out because it ended early.
    std::optional<std::int64_t> seconds{};  ///< How long the run took, where that is known.
    std::optional<Engine> engine{};         ///< What processed the files, where that is told.
};

/// What a reader must know of a run that ended early; empty for a complete one.
String EarlyEndNote(const RunEnd& end, const ReportWords& words);

/// A report of a whole run in one format, as UTF-8. It only words what it is given: the parts make up the report in
/// the order head, files, foot, but the head is asked for last, when all is known that it tells.
class RunReport
{
public:
    RunReport() = default;
    virtual ~RunReport() = default;
    RunReport(const RunReport&) = delete;
    RunReport& operator=(const RunReport&) = delete;

    /// Asked for each file, in the order of the run. What has to stand in the head is remembered: failures, and the
    /// totals of each pair.
    virtual std::string OfFile(const FileReport& file) = 0;

    virtual std::string Head(const RunEnd& end) = 0;
    virtual std::string Foot(const RunEnd& end) = 0;
};

/// One web page that holds everything it needs, for people: facts, failures, totals of the pairs, then the files with
/// their hits in context. No text of a presentation can become markup or script in it. Of a very large run it shows the
/// first MostHitsOfPage hits in context and counts the others.
std::unique_ptr<RunReport> CreatePageReport(const RunFacts& facts, const ReportWords& words = {});

/// More hits than this make a page that browsers take long to open.
inline constexpr std::int64_t MostHitsOfPage = 100'000;

/// Comma-separated values (RFC 4180) for spreadsheets: one row for each hit, and one for what was counted without a hit
/// that tells of it, for each file without any hit, each warning and an early end. Its sum of occurrences is the run's.
/// No text of a presentation can become a formula in it.
std::unique_ptr<RunReport> CreateTableReport(const RunFacts& facts, const ReportWords& words = {});

}  // namespace tessarine
