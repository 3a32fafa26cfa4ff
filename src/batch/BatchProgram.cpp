#include "batch/BatchProgram.h"

#include <limits>
#include <optional>
#include <utility>

#include <fmt/format.h>

#include "batch/BackupCommands.h"
#include "batch/Cancellation.h"
#include "batch/JobFiles.h"
#include "batch/JobProject.h"
#include "batch/KeptReports.h"
#include "batch/LineText.h"
#include "batch/ListFiles.h"
#include "batch/Locations.h"
#include "batch/Output.h"
#include "batch/ReportedRun.h"
#include "batch/ReportFormats.h"
#include "batch/RunBackups.h"
#include "batch/SavedJob.h"
#include "model/Project.h"
#include "report/WithoutPath.h"
#include "saving/RunJournal.h"

namespace tessarine::batch
{

namespace
{

int StatusOf(std::int64_t failed, std::size_t notReached, Output& output)
{
    const auto count = static_cast<std::int64_t>(notReached);
    if (count > 0)
        output.Note(fmt::format("tessarine-batch: cancelled; {} {} not processed", Counted(count, "file"),
                                OneOrMore(count, "was", "were")));
    if (output.failed())
        output.Note("tessarine-batch: the report could not be written completely");
    // A run without a single hit is done, not failed.
    return failed > 0 || notReached > 0 || output.failed() ? ExitStatus::FileFailed : ExitStatus::Done;
}

std::string ProgressLine(std::size_t position, std::size_t count, const String& path)
{
    return fmt::format("[{}/{}] {}", position, count, ToUtf8(path));
}

/// The links to folders that were not followed, as the summary has them.
void NoteSkippedLinks(std::int64_t count, Output& output)
{
    if (count > 0)
        output.Note(fmt::format("tessarine-batch: {} {} left out; --follow takes {}", Counted(count, "linked folder"),
                                OneOrMore(count, "was", "were"), OneOrMore(count, "it", "them")));
}

/// Makes the backups of a run through what the run tells of its files, for as long as it lives.
class BackupsOfRun
{
public:
    BackupsOfRun(Project& project, BackupNaming naming, bool isDryRun) : project_(project), backups_(naming, isDryRun)
    {
        // An event has no way to take a receiver back; a project has one run here.
        project_.BeforFileProcess += [this](const String& path) { backups_.Remember(path); };
        project_.Opened = [this](const String& path, const auto& check) { backups_.Make(path, check); };
    }
    ~BackupsOfRun() { project_.Opened = {}; }
    BackupsOfRun(const BackupsOfRun&) = delete;
    BackupsOfRun& operator=(const BackupsOfRun&) = delete;

private:
    Project& project_;
    RunBackups backups_;
};

/// `pairList` is the list file that the pairs came from, or empty.
int ReportRun(const BatchCall& call, Project& project, const std::shared_ptr<FindAndReplaceItems>& list,
              const String& pairList, CollectedFiles collected, EngineOfRun& engine, Output& output)
{
    std::vector<JobFile>& files = collected.files;
    project.IsDryRun = call.dryRun;
    const bool replaces = call.command == Command::Replace;
    std::optional<BackupsOfRun> backups;
    // The run would make backups of its own before it opens a file, in a find too, and over those that are there.
    if (std::exchange(project.options->BackupMode, false) && replaces) {
        backups.emplace(project, call.backupNaming, call.dryRun);
        if (call.backupNaming == BackupNaming::First)
            RefuseSharedBackups(files);
    }

    const auto report = CreateReport(call, output.colors());
    KeptReports kept(call, files, pairList);
    RunSummary summary;
    summary.skippedLinks = collected.skippedLinks;
    // A run without files starts nothing.
    if (!files.empty())
        summary.engine = engine.Choose();
    if (summary.engine)
        output.Write(report->AtStart(*summary.engine));
    ReportedRun run(project, replaces ? ReportedRun::Mode::Replace : ReportedRun::Mode::Find,
                    [&](const FileReport& file) {
                        SetFileInWork({});
                        summary.Add(file);
                        output.Write(report->OfFile(file));
                        kept.Add(file);
                    });
    run.List = list;
    if (call.show || !call.reports.empty()) {
        project.HitContext = call.context;
        run.HitsToKeep =
            call.maxHits > 0 ? static_cast<std::size_t>(call.maxHits) : std::numeric_limits<std::size_t>::max();
    }
    run.CancelRequested = IsCancelRequested;
    run.Started = [&](const String& path) {
        SetFileInWork(path);
        // All files before this one have their report, so their number gives its place.
        output.Progress(ProgressLine(static_cast<std::size_t>(summary.files) + 1, files.size(), path));
    };

    const std::size_t notReached = run.Run(files);
    output.Write(report->AtEnd(summary));
    NoteSkippedLinks(summary.skippedLinks, output);
    const int status = StatusOf(summary.failed, notReached, output);
    const bool isKept = kept.Finish({.way = notReached > 0 ? RunEnd::Way::Cancelled : RunEnd::Way::Complete,
                                     .notReached = static_cast<std::int64_t>(notReached),
                                     .engine = summary.engine},
                                    output);
    return isKept ? status : ExitStatus::FileFailed;
}

void NoteAll(const std::vector<std::string>& notes, Output& output)
{
    for (const std::string& note : notes)
        output.Note("tessarine-batch: " + note);
}

int PerformRun(const BatchCall& call, CollectedFiles collected, const std::shared_ptr<EngineOfRun>& engine,
               Output& output)
{
    const ProjectOwner project(engine);
    FillProject(*project, call);
    BatchCall asRun = call;
    if (call.list || call.pairFile) {
        NoteAll(TakeListPairs(*project, call), output);
        SwitchOn(asRun.setting, "all");  // each pair has its own places; a report leaves out those not searched
    }
    const String source = call.pairFile == u"-" ? String() : call.pairFile.value_or(call.list.value_or(String()));
    return ReportRun(asRun, *project, {}, source, std::move(collected), *engine, output);
}

int RunSavedJob(const BatchCall& call, const Engines& engines, Output& output)
{
    const auto engine = std::make_shared<EngineOfRun>(call, engines);
    // Loaded into a fresh project: custom properties of a file are appended to those that are there.
    const ProjectOwner project(engine);
    LoadJob(*project, call.job);
    SavedRun run = PrepareRun(*project, call);
    NoteAll(run.notes, output);

    BatchCall asRun = call;
    asRun.command = call.replacesOfJob ? Command::Replace : Command::Find;
    project->options->BackupMode = project->options->BackupMode || call.backup;
    SwitchOn(asRun.setting, "all");  // each pair has its own places; a report leaves out those not searched
    const SavedSource source = SourceOf(*project);
    return ReportRun(asRun, *project, run.list, source.isExternal ? source.path : String(), std::move(run.collected),
                     *engine, output);
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
    if (call.list || call.pairFile)
        NoteAll(TakeListPairs(*project, call), output);
    FillSavedJob(*project, call);
    const String saved = SaveJob(*project, call.job);
    if (!call.quiet)
        output.Write("saved " + Escaped(saved) + "\n");
    return output.failed() ? ExitStatus::FileFailed : ExitStatus::Done;
}

int ConvertListFile(const BatchCall& call, Output& output)
{
    const ConvertedList converted = ConvertList(*call.list, call.newList);
    if (!call.quiet)
        output.Write(fmt::format("saved {}: {}\n", Escaped(call.newList), Counted(converted.pairs, "pair")));
    if (!converted.loss.empty())
        output.Note("tessarine-batch: " +
                    OnOneLine(ToUtf8(call.newList) + " differs from the list: " + converted.loss));
    return converted.loss.empty() && !output.failed() ? ExitStatus::Done : ExitStatus::FileFailed;
}

int PerformBackupCommand(const BatchCall& call, const CollectedFiles& collected, Output& output)
{
    const std::vector<JobFile>& files = collected.files;
    const auto report = CreateReport(call, output.colors());
    BackupCommands commands(call, files);
    BackupSummary summary;
    summary.skippedLinks = collected.skippedLinks;
    std::size_t reached = 0;
    for (const JobFile& file : files) {
        // Between two files only, so that a copy in progress comes to its end.
        if (IsCancelRequested())
            break;
        SetFileInWork(file.path);
        output.Progress(ProgressLine(++reached, files.size(), file.path));
        const auto done = !file.refusal.empty() ? BackupReport{0, file.path, {}, WithoutPath(file.refusal, file.path)}
                          : call.command == Command::Restore ? commands.Restore(file.path)
                                                             : commands.Clean(file.path);
        SetFileInWork({});
        summary.Add(done);
        output.Write(report->OfFile(done));
    }
    output.Write(report->AtEnd(summary));
    NoteSkippedLinks(summary.skippedLinks, output);
    return StatusOf(summary.failed, files.size() - reached, output);
}

int PerformOnFiles(const BatchCall& call, const Engines& engines, Output& output)
{
    const auto engine = std::make_shared<EngineOfRun>(call, engines);
    CollectedFiles collected = CollectFiles(call);
    // A note and no failure: a script may run over folders that are empty.
    if (collected.files.empty())
        output.Note("tessarine-batch: no file matches");
    if (call.command == Command::Restore || call.command == Command::Clean)
        return PerformBackupCommand(call, collected, output);
    return PerformRun(call, std::move(collected), engine, output);
}

/// What runs that were killed have left is put right before files are looked at: the mode of one decides whether it is
/// processed at all.
void RecoverFiles(Output& output)
{
    for (const RecoveredFile& file : RecoverFromKilledRuns())
        output.Note("tessarine-batch: " + OnOneLine(ToUtf8(file.path + u": " + file.text)));
}

}  // namespace

int Perform(const BatchCall& call, const Engines& engines, Output& output)
{
    try {
        RecoverFiles(output);
        switch (call.command) {
            case Command::Run:
                return RunSavedJob(call, engines, output);
            case Command::JobShow:
                return ShowJob(call, output);
            case Command::JobMake:
                return MakeJob(call, output);
            case Command::ListConvert:
                return ConvertListFile(call, output);
            default:
                return PerformOnFiles(call, engines, output);
        }
    } catch (const Failure& failure) {
        // Files are reported one by one; what arrives here was raised before the first one.
        output.Note("tessarine-batch: " + OnOneLine(ToUtf8(failure.Reason())));
        return ExitStatus::NotValid;
    } catch (...) {
        // Out of memory, for instance; which files have been processed is in the report so far.
        output.Note("tessarine-batch: " + OnOneLine(ToUtf8(CurrentFailure().Reason())));
        return ExitStatus::FileFailed;
    }
}

}  // namespace tessarine::batch
