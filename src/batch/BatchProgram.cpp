#include "batch/BatchProgram.h"

#include <chrono>
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
#include "batch/ProgressText.h"
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

int StatusOf(std::int64_t failed, std::int64_t notReached, Output& output)
{
    if (notReached > 0)
        output.Note(fmt::format("tessarine-batch: cancelled; {} {} not processed", Counted(notReached, "file"),
                                OneOrMore(notReached, "was", "were")));
    if (output.failed())
        output.Note("tessarine-batch: the report could not be written completely");
    // A run without a single hit is done, not failed.
    return failed > 0 || notReached > 0 || output.failed() ? ExitStatus::FileFailed : ExitStatus::Done;
}

/// The links to folders that were not followed.
std::string SkippedLinksText(std::int64_t count)
{
    return fmt::format("{} {} left out; --follow takes {}", Counted(count, "linked folder"),
                       OneOrMore(count, "was", "were"), OneOrMore(count, "it", "them"));
}

void NoteSkippedLinks(std::int64_t count, Output& output)
{
    if (count > 0)
        output.Note("tessarine-batch: " + SkippedLinksText(count));
}

/// Adds to a summary's warnings what is noted about links.
template <class Summary>
void TakeSkippedLinks(Summary& summary)
{
    if (summary.skippedLinks > 0)
        summary.warnings.push_back(FromUtf8(SkippedLinksText(summary.skippedLinks)));
}

/// Without a reader nobody would learn what is done from here on, so the command ends as by a cancel.
bool IsToEnd(const Output& output)
{
    return IsCancelRequested() || output.readerIsGone();
}

/// Writes what is said of a file. What finds no reader any more is told on standard error, in short.
void WriteOfFile(const std::string& lines, const String& path, std::string_view state, Output& output)
{
    const bool hadReader = !output.readerIsGone();
    output.Write(lines);
    if (hadReader && output.readerIsGone())
        output.Note(fmt::format("tessarine-batch: nobody reads the report any more; the last file was {}: {}",
                                ToUtf8(path), state));
}

std::string_view StateText(const BackupReport& file, bool restores)
{
    if (file.status == FileStatus::Counted)
        return restores ? "restored" : "removed";
    return file.status == FileStatus::NothingCounted ? "no backup" : "failed";
}

std::vector<String> TextsOf(const std::vector<std::string>& notes)
{
    std::vector<String> texts;
    for (const std::string& note : notes)
        texts.push_back(FromUtf8(note));
    return texts;
}

using Clock = std::chrono::steady_clock;

std::int64_t SecondsSince(Clock::time_point begin)
{
    return std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - begin).count();
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

/// `pairList` is the list file that the pairs came from, or empty; `notes` is what was noted about the job so far.
int ReportRun(const BatchCall& call, Project& project, const std::shared_ptr<FindAndReplaceItems>& list,
              const String& pairList, CollectedFiles collected, const std::vector<std::string>& notes,
              EngineOfRun& engine, Output& output)
{
    const auto begin = Clock::now();
    std::vector<JobFile>& files = collected.files;
    project.IsDryRun = call.dryRun;
    project.KeepsDatesOfUnchanged = true;
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
    summary.warnings = TextsOf(notes);
    // A run without files starts nothing.
    if (!files.empty())
        summary.engine = engine.Choose();
    if (summary.engine)
        output.Write(report->AtStart(*summary.engine));
    ReportedRun run(project, replaces ? ReportedRun::Mode::Replace : ReportedRun::Mode::Find,
                    [&](const FileReport& file) {
                        SetFileInWork({});
                        summary.Add(file);
                        WriteOfFile(report->OfFile(file), file.path, StateText(file, replaces), output);
                        kept.Add(file);
                    });
    run.List = list;
    if (call.show || !call.reports.empty()) {
        project.HitContext = call.context;
        run.HitsToKeep =
            call.maxHits > 0 ? static_cast<std::size_t>(call.maxHits) : std::numeric_limits<std::size_t>::max();
    }
    run.CancelRequested = [&] { return IsToEnd(output); };
    run.Started = [&](const String& path) {
        SetFileInWork(path);
        // All files before this one have their report, so their number gives its place.
        output.Progress(ProgressText({summary.files, std::ssize(files), summary.failed, SecondsSince(begin)}),
                        ToUtf8(path));
    };

    summary.notReached = static_cast<std::int64_t>(run.Run(files));
    summary.seconds = SecondsSince(begin);
    TakeSkippedLinks(summary);
    output.Write(report->AtEnd(summary));
    NoteSkippedLinks(summary.skippedLinks, output);
    const int status = StatusOf(summary.failed, summary.notReached, output);
    const bool isKept = kept.Finish({.way = summary.notReached > 0 ? RunEnd::Way::Cancelled : RunEnd::Way::Complete,
                                     .notReached = summary.notReached,
                                     .engine = summary.engine},
                                    output);
    if (!isKept || status != ExitStatus::Done)
        return ExitStatus::FileFailed;
    return call.exitCode && summary.IsWithoutHits() ? ExitStatus::NothingFound : ExitStatus::Done;
}

void NoteAll(const std::vector<std::string>& notes, Output& output)
{
    for (const std::string& note : notes)
        output.Note("tessarine-batch: " + note);
}

int PerformRun(const BatchCall& call, CollectedFiles collected, std::vector<std::string> notes,
               const std::shared_ptr<EngineOfRun>& engine, Output& output)
{
    const ProjectOwner project(engine);
    FillProject(*project, call);
    BatchCall asRun = call;
    if (call.list || call.pairFile) {
        const std::vector<std::string> ofList = TakeListPairs(*project, call);
        NoteAll(ofList, output);
        notes.insert(notes.end(), ofList.begin(), ofList.end());
        SwitchOn(asRun.setting, "all");  // each pair has its own places; a report leaves out those not searched
    }
    const String source = call.pairFile == u"-" ? String() : call.pairFile.value_or(call.list.value_or(String()));
    return ReportRun(asRun, *project, {}, source, std::move(collected), notes, *engine, output);
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
                     run.notes, *engine, output);
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

int PerformBackupCommand(const BatchCall& call, const CollectedFiles& collected, const std::vector<std::string>& notes,
                         Output& output)
{
    const std::vector<JobFile>& files = collected.files;
    const auto report = CreateReport(call, output.colors());
    BackupCommands commands(call, files);
    const auto begin = Clock::now();
    BackupSummary summary;
    summary.skippedLinks = collected.skippedLinks;
    summary.warnings = TextsOf(notes);
    std::size_t reached = 0;
    for (const JobFile& file : files) {
        // Between two files only, so that a copy in progress comes to its end.
        if (IsToEnd(output))
            break;
        SetFileInWork(file.path);
        output.Progress(ProgressText({summary.files, std::ssize(files), summary.failed, SecondsSince(begin)}),
                        ToUtf8(file.path));
        ++reached;
        const auto done = !file.refusal.empty() ? BackupReport{0, file.path, {}, WithoutPath(file.refusal, file.path)}
                          : call.command == Command::Restore ? commands.Restore(file.path)
                                                             : commands.Clean(file.path);
        SetFileInWork({});
        summary.Add(done);
        WriteOfFile(report->OfFile(done), done.file, StateText(done, call.command == Command::Restore), output);
    }
    summary.notReached = static_cast<std::int64_t>(files.size() - reached);
    TakeSkippedLinks(summary);
    output.Write(report->AtEnd(summary));
    NoteSkippedLinks(summary.skippedLinks, output);
    return StatusOf(summary.failed, summary.notReached, output);
}

int PerformOnFiles(const BatchCall& call, const Engines& engines, Output& output)
{
    const auto engine = std::make_shared<EngineOfRun>(call, engines);
    CollectedFiles collected = CollectFiles(call);
    // A note and no failure: a script may run over folders that are empty.
    std::vector<std::string> notes;
    if (collected.files.empty())
        notes.push_back("no file matches");
    NoteAll(notes, output);
    if (call.command == Command::Restore || call.command == Command::Clean)
        return PerformBackupCommand(call, collected, notes, output);
    return PerformRun(call, std::move(collected), std::move(notes), engine, output);
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
