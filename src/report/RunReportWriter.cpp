#include "report/RunReportWriter.h"

#include <span>

#include "files/FileFailure.h"
#include "files/Files.h"
#include "platform/CaseFolding.h"
#include "platform/NativePath.h"
#include "report/ReportSpool.h"
#include "saving/ReplacementFile.h"

namespace tessarine
{

namespace
{

std::unique_ptr<RunReport> CreateReport(const String& path, const RunFacts& facts, const ReportWords& words)
{
    const auto kind = RunReportKindOf(path);
    if (!kind)
        throw Failure(FailureNumber::InvalidProcedureCall, u"The name of a report must end in .html or .csv: " + path);
    return kind == RunReportKind::Page ? CreatePageReport(facts, words) : CreateTableReport(facts, words);
}

/// Raises the reason for which the report couldn't take its place, if that is known already.
void ProveThatItCanBeWritten(const String& path)
{
    if (FolderExists(path))
        throw SystemFileFailure(FileTrouble::NotPermitted, "save", NativePath(path), "it is a folder");
    // Makes its new file beside the old one, and removes it at once.
    const ReplacementFile proof(path, ReplacementFile::Missing::IsMade);
}

void Write(ReplacementFile& file, const std::string& text)
{
    file.Write(std::as_bytes(std::span(text)));
}

}  // namespace

std::optional<RunReportKind> RunReportKindOf(StringView path)
{
    const String end = ToUpper(path.substr(path.size() - std::min<std::size_t>(path.size(), 5)));
    if (end == u".HTML")
        return RunReportKind::Page;
    return end.ends_with(u".CSV") ? std::optional(RunReportKind::Table) : std::nullopt;
}

RunReportWriter::RunReportWriter(const String& path, const RunFacts& facts, const ReportWords& words)
    : path_(path), report_(CreateReport(path, facts, words))
{
    ProveThatItCanBeWritten(path);
    files_ = std::make_unique<ReportSpool>(path);
}

RunReportWriter::~RunReportWriter() = default;

void RunReportWriter::Add(const FileReport& file) noexcept
{
    if (failure_)
        return;
    try {
        files_->Write(report_->OfFile(file));
    } catch (...) {
        failure_ = CurrentFailure();
    }
}

void RunReportWriter::Finish(const RunEnd& end)
{
    if (failure_)
        throw *failure_;
    ReplacementFile file(path_, ReplacementFile::Missing::IsMade);
    Write(file, report_->Head(end));
    files_->CopyTo(file);
    Write(file, report_->Foot(end));
    file.Commit();
    files_.reset();  // with its temporary file
}

}  // namespace tessarine
