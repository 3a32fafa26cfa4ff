#pragma once

#include <memory>
#include <optional>

#include "platform/Failure.h"
#include "platform/String.h"
#include "report/RunReport.h"

namespace tessarine
{

class ReportSpool;

/// The formats that a report of a run can be kept in.
enum class RunReportKind { Page, Table };

/// The format that a path's extension asks for, in any case: ".html" or ".csv". Nothing for every other.
std::optional<RunReportKind> RunReportKindOf(StringView path);

/// Keeps the report of a run in a file, all or nothing: an older file of that name stays until the new one is complete.
///
/// Memory doesn't grow with the run but for what the head of a report tells, because the files' parts wait in a
/// temporary file beside the report.
class RunReportWriter
{
public:
    /// Takes the format of the path's extension, which must be one of RunReportKindOf, and proves that the file can be
    /// written, as far as that can be known before the run: raises what ReplacementFile raises for a missing folder,
    /// a folder or a file that this process may not write, and for a path that names a folder.
    RunReportWriter(const String& path, const RunFacts& facts, const ReportWords& words = {});
    ~RunReportWriter();
    RunReportWriter(const RunReportWriter&) = delete;
    RunReportWriter& operator=(const RunReportWriter&) = delete;

    const String& Path() const { return path_; }

    /// Adds a file of the run. Never raises, because a run must not end for its report: the first failure, such as a
    /// full disk, comes out of Finish.
    void Add(const FileReport& file) noexcept;

    /// Writes the whole report. To be called once, after the last file. Raises what ReplacementFile raises, and the
    /// failure of an Add before; the path then names what it named before.
    void Finish(const RunEnd& end);

private:
    const String path_;
    std::unique_ptr<RunReport> report_;
    std::unique_ptr<ReportSpool> files_;
    std::optional<Failure> failure_;  // of the first Add that failed
};

}  // namespace tessarine
