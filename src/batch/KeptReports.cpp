#include "batch/KeptReports.h"

#include <string>
#include <unordered_set>

#include "batch/FileIdentity.h"
#include "batch/LineText.h"
#include "batch/Output.h"
#include "batch/Refusal.h"
#include "platform/Failure.h"

namespace tessarine::batch
{

namespace
{

[[noreturn]] void RefuseReport(const String& path, const std::string& reason)
{
    Refuse("--report: " + Quoted(path) + " " + reason);
}

/// The presentations, and all else that the call reads.
void CheckTargets(const BatchCall& call, const std::vector<JobFile>& files, const String& pairList)
{
    FileIdentity identity;
    std::unordered_set<std::string> presentations;
    for (const JobFile& file : files)
        presentations.insert(identity.Of(file.path));
    std::unordered_set<std::string> read;
    for (const String& path : {call.job, call.filesFrom.value_or(String()), pairList})
        if (!path.empty())
            read.insert(identity.Of(path));

    std::unordered_set<std::string> reports;
    for (const String& path : call.reports) {
        const std::string report = identity.Of(path);
        if (presentations.contains(report))
            RefuseReport(path, "is one of the files to process");
        if (read.contains(report))
            RefuseReport(path, "is a file that the call reads");
        if (!reports.insert(report).second)
            RefuseReport(path, "is named twice");
    }
}

}  // namespace

KeptReports::KeptReports(const BatchCall& call, const std::vector<JobFile>& files, const String& pairList, Of of)
    : started_(of == Of::ThisRun ? std::time(nullptr) : 0)
{
    if (call.reports.empty())
        return;
    CheckTargets(call, files, pairList);
    const RunFacts facts{
        .replaces = call.command == Command::Replace, .isDryRun = call.dryRun, .started = started_, .job = call.job};
    for (const String& path : call.reports)
        writers_.push_back(std::make_unique<RunReportWriter>(path, facts));
}

void KeptReports::Add(const FileReport& file)
{
    for (const auto& writer : writers_)
        writer->Add(file);
}

bool KeptReports::Finish(RunEnd end, Output& output)
{
    if (started_ != 0)
        end.seconds = std::time(nullptr) - started_;
    bool isWritten = true;
    for (const auto& writer : writers_) {
        try {
            writer->Finish(end);
        } catch (...) {
            isWritten = false;
            output.Note("tessarine-batch: " + OnOneLine(ToUtf8(CurrentFailure().Reason())));
        }
    }
    return isWritten;
}

}  // namespace tessarine::batch
