#include "batch/BatchProgram.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

#include <fmt/format.h>

#include "batch/BackupCommands.h"
#include "batch/Cancellation.h"
#include "batch/FilesOfRun.h"
#include "batch/JobFiles.h"
#include "batch/JobProject.h"
#include "batch/KeptReports.h"
#include "batch/LineText.h"
#include "batch/ListFiles.h"
#include "batch/MergeReports.h"
#include "batch/Output.h"
#include "batch/OwnRun.h"
#include "batch/PreparedRun.h"
#include "batch/ProgressText.h"
#include "batch/RecordedReports.h"
#include "batch/RecordKeeper.h"
#include "batch/ReportFormats.h"
#include "batch/RunRecord.h"
#include "batch/SavedJob.h"
#include "batch/StandardInput.h"
#include "batch/WorkerRun.h"
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

void NoteAll(const std::vector<std::string>& notes, Output& output)
{
    for (const std::string& note : notes)
        output.Note("tessarine-batch: " + note);
}

/// How many workers take the files; 1 for none but this process.
std::size_t WorkersFor(const BatchCall& call, const std::optional<Engine>& engine, Output& output)
{
    const std::size_t workers = call.jobs == 0 ? CoreCount() : static_cast<std::size_t>(call.jobs);
    if (workers == 1 || engine != Engine::PowerPoint)
        return workers;
    output.Note("tessarine-batch: PowerPoint has one file in hand at a time; --jobs has no effect");
    return 1;
}

/// What a run tells of its files, and asks, while it takes them. Files are named by their index.
struct RunWatch {
    ReportedRun::Sink sink;
    std::function<void(const std::vector<String>& files)> inHand;
    std::function<bool(std::size_t file)> begins;
    std::function<void(std::size_t file, const FileReport& report)> done;
    std::function<bool()> isToEnd;
};

/// Takes the files through the run in this process. Gives the number of those that a cancel left out, as below.
std::size_t RunHere(PreparedRun& run, const std::vector<JobFile>& files, const RunWatch& watch)
{
    std::size_t next = 0;
    OwnRun own(run, [&](const FileReport& file) {
        watch.inHand({});
        watch.done(next++, file);
        watch.sink(file);
    });
    own.Started = [&](std::size_t file) {
        watch.inHand({files[file].path});
        return watch.begins(file);
    };
    own.CancelRequested = watch.isToEnd;
    return own.Run(files);
}

/// Takes them through workers.
std::size_t RunInWorkers(const PreparedRun& run, std::size_t workers, const std::vector<JobFile>& files,
                         const RunWatch& watch, Output& output)
{
    WorkerRun several({.arguments = run.call.arguments,
                       .standardInput = KeptStandardInput(),
                       .job = run.ToJson(),
                       .replaces = run.Replaces()},
                      workers, watch.sink);
    several.InHand = watch.inHand;
    several.Begins = watch.begins;
    several.Done = watch.done;
    several.CancelRequested = watch.isToEnd;
    several.Note = [&](const std::string& line) { output.Note(line); };
    return several.Run(files);
}

/// Takes the files through the run, and reports.
int ReportRun(PreparedRun& run, const FilesOfRun& ofRun, RunRecord* record, EngineOfRun& engine, Output& output)
{
    const BatchCall& call = run.call;
    const auto begin = Clock::now();
    const std::vector<JobFile>& files = ofRun.collected.files;
    const auto report = CreateReport(call, output.colors(), ofRun.shard);
    KeptReports kept(call, files, run.pairList);
    RunSummary summary;
    summary.skippedLinks = ofRun.collected.skippedLinks;
    summary.warnings = TextsOf(run.notes);
    // A run without files starts nothing.
    if (!files.empty())
        summary.engine = engine.Choose();
    if (summary.engine)
        output.Write(report->AtStart(*summary.engine));
    RecordedReports reports(record, files, [&](const FileReport& file) {
        summary.Add(file);
        WriteOfFile(report->OfFile(file), file.path, StateText(file, run.Replaces()), output);
        kept.Add(file);
    });
    RecordKeeper keeper(record, reports);
    const RunWatch watch{
        .sink = [&](const FileReport& file) { reports.Take(file); },
        .inHand =
            [&](const std::vector<String>& inHand) {
                SetFilesInWork(inHand);
                if (inHand.empty())
                    return;
                // All files before those in hand have their report, so their number gives the place.
                output.Progress(ProgressText({summary.files, std::ssize(files), summary.failed, SecondsSince(begin)}),
                                ToUtf8(inHand.back()));
            },
        .begins = [&](std::size_t file) { return keeper.Begins(file); },
        .done = [&](std::size_t file, const FileReport& done) { keeper.Done(file, done); },
        .isToEnd = [&] { return IsToEnd(output) || keeper.failure(); },
    };
    const std::size_t workers = std::min(WorkersFor(call, summary.engine, output), reports.ToDo().size());
    const std::size_t notReached =
        workers > 1 ? RunInWorkers(run, workers, reports.ToDo(), watch, output) : RunHere(run, reports.ToDo(), watch);
    reports.End();

    summary.notReached = static_cast<std::int64_t>(notReached);
    summary.seconds = SecondsSince(begin);
    TakeSkippedLinks(summary);
    output.Write(report->AtEnd(summary));
    NoteSkippedLinks(summary.skippedLinks, output);
    if (const auto failure = keeper.failure())
        output.Note("tessarine-batch: the run ended as its record can't be kept: " +
                    OnOneLine(ToUtf8(failure->Reason())));
    const int status = StatusOf(summary.failed, summary.notReached, output);
    const bool isKept = kept.Finish({.way = summary.notReached > 0 ? RunEnd::Way::Cancelled : RunEnd::Way::Complete,
                                     .notReached = summary.notReached,
                                     .engine = summary.engine},
                                    output);
    if (!isKept || keeper.failure() || status != ExitStatus::Done)
        return ExitStatus::FileFailed;
    return call.exitCode && summary.IsWithoutHits() ? ExitStatus::NothingFound : ExitStatus::Done;
}

/// A note and no failure: a script may run over folders that are empty.
void NoteMissingFiles(std::int64_t files, std::vector<std::string>& notes)
{
    if (files == 0)
        notes.push_back("no file matches");
}

int PerformRun(const BatchCall& call, const Engines& engines, Output& output)
{
    if (call.pairFile == u"-")
        KeepStandardInput();
    const auto engine = std::make_shared<EngineOfRun>(call, engines);
    PreparedRun run(call, engine);
    std::optional<RunRecord> record;
    FilesOfRun collected;
    const auto collect = [&] { return CollectFilesOfRun(run); };
    if (!call.record.empty())
        record.emplace(run);
    else
        collected = collect();
    const FilesOfRun& files = record ? record->Files(collect) : collected;
    // A share may be empty where the job is not.
    NoteMissingFiles(files.shard ? files.shard->files : std::ssize(files.collected.files), run.notes);
    NoteAll(run.notes, output);
    return ReportRun(run, files, record ? &*record : nullptr, *engine, output);
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

int PerformBackupCommand(const BatchCall& call, Output& output)
{
    const CollectedFiles collected = CollectFiles(call);
    std::vector<std::string> notes;
    NoteMissingFiles(std::ssize(collected.files), notes);
    NoteAll(notes, output);
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
        SetFilesInWork({file.path});
        output.Progress(ProgressText({summary.files, std::ssize(files), summary.failed, SecondsSince(begin)}),
                        ToUtf8(file.path));
        ++reached;
        const auto done = !file.refusal.empty() ? BackupReport{0, file.path, {}, WithoutPath(file.refusal, file.path)}
                          : call.command == Command::Restore ? commands.Restore(file.path)
                                                             : commands.Clean(file.path);
        SetFilesInWork({});
        summary.Add(done);
        WriteOfFile(report->OfFile(done), done.file, StateText(done, call.command == Command::Restore), output);
    }
    summary.notReached = static_cast<std::int64_t>(files.size() - reached);
    TakeSkippedLinks(summary);
    output.Write(report->AtEnd(summary));
    NoteSkippedLinks(summary.skippedLinks, output);
    return StatusOf(summary.failed, summary.notReached, output);
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
            case Command::JobShow:
                return ShowJob(call, output);
            case Command::JobMake:
                return MakeJob(call, output);
            case Command::ListConvert:
                return ConvertListFile(call, output);
            case Command::ReportMerge:
                return MergeReports(call, output);
            case Command::Restore:
            case Command::Clean:
                return PerformBackupCommand(call, output);
            default:
                return PerformRun(call, engines, output);
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
