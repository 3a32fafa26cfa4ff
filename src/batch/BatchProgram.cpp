#include "batch/BatchProgram.h"

#include <fmt/format.h>

#include "batch/BackupCommands.h"
#include "batch/Cancellation.h"
#include "batch/JobFiles.h"
#include "batch/JobProject.h"
#include "batch/LineText.h"
#include "batch/ListFiles.h"
#include "batch/Locations.h"
#include "batch/Output.h"
#include "batch/ReportedRun.h"
#include "batch/ReportFormats.h"
#include "batch/SavedJob.h"
#include "model/Project.h"

namespace tessarine::batch
{

namespace
{

int StatusOf(std::int64_t failed, std::size_t notReached, Output& output)
{
    if (notReached > 0)
        output.Note(fmt::format("tessarine-batch: cancelled; {} not processed",
                                notReached == 1 ? "1 file was" : fmt::format("{} files were", notReached)));
    if (output.failed())
        output.Note("tessarine-batch: the report could not be written completely");
    // A run without a single hit is done, not failed.
    return failed > 0 || notReached > 0 || output.failed() ? ExitStatus::FileFailed : ExitStatus::Done;
}

std::string ProgressLine(std::size_t position, std::size_t count, const String& path)
{
    return fmt::format("[{}/{}] {}", position, count, ToUtf8(path));
}

int ReportRun(const BatchCall& call, Project& project, const std::shared_ptr<FindAndReplaceItems>& list,
              std::vector<JobFile> files, Output& output)
{
    // Before the run, which would copy the second file over the first one's backup.
    if (project.options->BackupMode)
        RefuseSharedBackups(files);

    const auto report = CreateReport(call, output.colors());
    RunSummary summary;
    ReportedRun run(project, call.command == Command::Replace ? ReportedRun::Mode::Replace : ReportedRun::Mode::Find,
                    [&](const FileReport& file) {
                        summary.Add(file);
                        output.Write(report->OfFile(file));
                    });
    run.List = list;
    run.CancelRequested = IsCancelRequested;
    run.Started = [&](const String& path) {
        // All files before this one have their report, so their number gives its place.
        output.Progress(ProgressLine(static_cast<std::size_t>(summary.files) + 1, files.size(), path));
    };

    const std::size_t notReached = run.Run(files);
    output.Write(report->AtEnd(summary));
    return StatusOf(summary.failed, notReached, output);
}

void NoteAll(const std::vector<std::string>& notes, Output& output)
{
    for (const std::string& note : notes)
        output.Note("tessarine-batch: " + note);
}

int PerformRun(const BatchCall& call, std::vector<JobFile> files, const std::shared_ptr<powerpoint::Provider>& provider,
               Output& output)
{
    const ProjectOwner project(provider);
    FillProject(*project, call);
    BatchCall asRun = call;
    if (call.list) {
        NoteAll(TakeListPairs(*project, call), output);
        SwitchOn(asRun.setting, "all");  // each pair has its own places; a report leaves out those not searched
    }
    return ReportRun(asRun, *project, {}, std::move(files), output);
}

int RunSavedJob(const BatchCall& call, const std::shared_ptr<powerpoint::Provider>& provider, Output& output)
{
    // Loaded into a fresh project: custom properties of a file are appended to those that are there.
    const ProjectOwner project(provider);
    LoadJob(*project, call.job);
    SavedRun run = PrepareRun(*project, call);
    NoteAll(run.notes, output);

    BatchCall asRun = call;
    asRun.command = call.replacesOfJob ? Command::Replace : Command::Find;
    SwitchOn(asRun.setting, "all");  // each pair has its own places; a report leaves out those not searched
    return ReportRun(asRun, *project, run.list, std::move(run.files), output);
}

int ShowJob(const BatchCall& call, Output& output)
{
    const ProjectOwner project;
    LoadJob(*project, call.job);
    output.Write(CreateReport(call, output.colors())->OfJob(call.job, *project));
    return output.failed() ? ExitStatus::FileFailed : ExitStatus::Done;
}

int MakeJob(const BatchCall& call, Output& output)
{
    const ProjectOwner project;
    FillProject(*project, call);
    if (call.list)
        NoteAll(TakeListPairs(*project, call), output);
    FillSavedJob(*project, call);
    output.Write("saved " + ToUtf8(SaveJob(*project, call.job)) + "\n");
    return output.failed() ? ExitStatus::FileFailed : ExitStatus::Done;
}

int ConvertListFile(const BatchCall& call, Output& output)
{
    const ConvertedList converted = ConvertList(*call.list, call.newList);
    output.Write(fmt::format("saved {}: {}\n", ToUtf8(call.newList), Counted(converted.pairs, "pair")));
    if (!converted.loss.empty())
        output.Note("tessarine-batch: " +
                    OnOneLine(ToUtf8(call.newList) + " differs from the list: " + converted.loss));
    return converted.loss.empty() && !output.failed() ? ExitStatus::Done : ExitStatus::FileFailed;
}

int PerformBackupCommand(const BatchCall& call, const std::vector<JobFile>& files, Output& output)
{
    const auto report = CreateReport(call, output.colors());
    const BackupOwners owners(call, files);
    BackupSummary summary;
    std::size_t reached = 0;
    for (const JobFile& file : files) {
        // Between two files only, so that a copy in progress comes to its end.
        if (IsCancelRequested())
            break;
        output.Progress(ProgressLine(++reached, files.size(), file.path));
        const auto done = !file.refusal.empty()              ? BackupReport{0, file.path, {}, file.refusal}
                          : call.command == Command::Restore ? RestoreFile(file.path, owners)
                                                             : RemoveBackup(file.path, owners);
        summary.Add(done);
        output.Write(report->OfFile(done));
    }
    output.Write(report->AtEnd(summary));
    return StatusOf(summary.failed, files.size() - reached, output);
}

int PerformOnFiles(const BatchCall& call, const std::shared_ptr<powerpoint::Provider>& provider, Output& output)
{
    std::vector<JobFile> files = CollectFiles(call);
    // A note and no failure: a script may run over folders that are empty.
    if (files.empty())
        output.Note("tessarine-batch: no file matches");
    if (call.command == Command::Restore || call.command == Command::Clean)
        return PerformBackupCommand(call, files, output);
    return PerformRun(call, std::move(files), provider, output);
}

}  // namespace

int Perform(const BatchCall& call, const std::shared_ptr<powerpoint::Provider>& provider, Output& output)
{
    try {
        switch (call.command) {
            case Command::Run:
                return RunSavedJob(call, provider, output);
            case Command::JobShow:
                return ShowJob(call, output);
            case Command::JobMake:
                return MakeJob(call, output);
            case Command::ListConvert:
                return ConvertListFile(call, output);
            default:
                return PerformOnFiles(call, provider, output);
        }
    } catch (const Failure& failure) {
        // Files are reported one by one; what arrives here was raised before the first one.
        output.Note("tessarine-batch: " + OnOneLine(ToUtf8(failure.Reason())));
        return ExitStatus::NotValid;
    }
}

}  // namespace tessarine::batch
