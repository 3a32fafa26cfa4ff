#include "batch/BatchProgram.h"

#include <fmt/format.h>

#include "batch/BackupCommands.h"
#include "batch/Cancellation.h"
#include "batch/FailureReason.h"
#include "batch/JobFiles.h"
#include "batch/JobProject.h"
#include "batch/JsonLines.h"
#include "batch/Output.h"
#include "batch/ReportedRun.h"
#include "batch/TextLayout.h"
#include "model/Project.h"

namespace tessarine::batch
{

namespace
{

/// Writes the lines of a report in the format of the call.
class Writer
{
public:
    Writer(const BatchCall& call, Output& output)
        : call_(call), output_(output), style_{call.command, call.verbose, output.colors()}
    {
    }

    void File(const FileReport& file)
    {
        Write(IsJson() ? JsonLine(file, call_.setting) : TextLines(file, call_.setting, style_));
    }
    void File(const BackupReport& file) { Write(IsJson() ? JsonLine(file) : TextLines(file, style_)); }

    void End(const RunSummary& summary) { WriteLast(IsJson() ? JsonLine(summary) : TextLine(summary, style_)); }
    void End(const BackupSummary& summary)
    {
        WriteLast(IsJson() ? JsonLine(summary, call_.command) : TextLine(summary, style_));
    }

private:
    bool IsJson() const { return call_.format == OutputFormat::Json; }

    void Write(const std::string& lines)
    {
        if (lines.empty())
            return;
        output_.Write(lines);
        wroteLines_ = true;
    }

    void WriteLast(const std::string& line) { output_.Write(wroteLines_ && !IsJson() ? "\n" + line : line); }

    const BatchCall& call_;
    Output& output_;
    TextStyle style_;
    bool wroteLines_ = false;
};

int StatusOf(std::int64_t failed, std::size_t notReached, Output& output)
{
    if (notReached > 0)
        output.Note(fmt::format("tessarine-batch: cancelled; {} not processed",
                                notReached == 1 ? "1 file was" : fmt::format("{} files were", notReached)));
    if (output.failed())
        output.Note("tessarine-batch: the report could not be written completely");
    return failed > 0 || notReached > 0 || output.failed() ? ExitStatus::FileFailed : ExitStatus::Done;
}

std::string ProgressLine(std::size_t position, std::size_t count, const String& path)
{
    return fmt::format("[{}/{}] {}", position, count, ToUtf8(path));
}

int PerformRun(const BatchCall& call, std::vector<JobFile> files, const std::shared_ptr<powerpoint::Provider>& provider,
               Output& output)
{
    if (call.backup)
        RefuseSharedBackups(files);

    const ProjectOwner project(provider);
    FillProject(*project, call);
    Writer writer(call, output);
    RunSummary summary;
    ReportedRun run(*project, call.command == Command::Replace ? ReportedRun::Mode::Replace : ReportedRun::Mode::Find,
                    [&](const FileReport& file) {
                        summary.Add(file);
                        writer.File(file);
                    });
    run.CancelRequested = IsCancelRequested;
    run.Started = [&](const String& path) {
        output.Progress(ProgressLine(static_cast<std::size_t>(summary.files) + 1, files.size(), path));
    };

    const std::size_t notReached = run.Run(files);
    writer.End(summary);
    return StatusOf(summary.failed, notReached, output);
}

int PerformBackupCommand(const BatchCall& call, const std::vector<JobFile>& files, Output& output)
{
    Writer writer(call, output);
    const BackupOwners owners(call, files);
    BackupSummary summary;
    std::size_t reached = 0;
    for (const JobFile& file : files) {
        if (IsCancelRequested())
            break;
        output.Progress(ProgressLine(++reached, files.size(), file.path));
        const auto report = !file.refusal.empty()              ? BackupReport{0, file.path, {}, file.refusal}
                            : call.command == Command::Restore ? RestoreFile(file.path, owners)
                                                               : RemoveBackup(file.path, owners);
        summary.Add(report);
        writer.File(report);
    }
    writer.End(summary);
    return StatusOf(summary.failed, files.size() - reached, output);
}

}  // namespace

int Perform(const BatchCall& call, const std::shared_ptr<powerpoint::Provider>& provider, Output& output)
{
    std::vector<JobFile> files;
    try {
        files = CollectFiles(call);
    } catch (const Failure& failure) {
        output.Note("tessarine-batch: " + ToUtf8(ReasonOf(failure)));
        return ExitStatus::NotValid;
    }
    if (files.empty())
        output.Note("tessarine-batch: no file matches");

    if (call.command == Command::Restore || call.command == Command::Clean)
        return PerformBackupCommand(call, files, output);
    return PerformRun(call, std::move(files), provider, output);
}

}  // namespace tessarine::batch
