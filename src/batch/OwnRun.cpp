#include "batch/OwnRun.h"

#include <limits>
#include <utility>

#include "batch/PreparedRun.h"
#include "batch/RunBackups.h"

namespace tessarine::batch
{

/// Makes the backups of a run through what the run tells of its files, for as long as it lives.
class OwnRun::Backups
{
public:
    Backups(Project& project, BackupNaming naming, bool isDryRun) : project_(project), backups_(naming, isDryRun)
    {
        // An event has no way to take a receiver back; a project has one run here.
        project_.BeforFileProcess += [this](const String& path) { backups_.Remember(path); };
        project_.Opened = [this](const String& path, const auto& check) { backups_.Make(path, check); };
    }
    ~Backups() { project_.Opened = {}; }
    Backups(const Backups&) = delete;
    Backups& operator=(const Backups&) = delete;

private:
    Project& project_;
    RunBackups backups_;
};

OwnRun::OwnRun(PreparedRun& run, ReportedRun::Sink sink)
    : run_(*run.project, run.Replaces() ? ReportedRun::Mode::Replace : ReportedRun::Mode::Find, std::move(sink))
{
    const BatchCall& call = run.call;
    Project& project = *run.project;
    project.IsDryRun = call.dryRun;
    project.KeepsDatesOfUnchanged = true;
    // The run would make backups of its own before it opens a file, in a find too, and over those that are there.
    if (std::exchange(project.options->BackupMode, false) && run.Replaces())
        backups_ = std::make_unique<Backups>(project, call.backupNaming, call.dryRun);
    run_.List = run.list;
    if (!call.TakesHits())
        return;
    project.HitContext = call.context;
    run_.HitsToKeep =
        call.maxHits > 0 ? static_cast<std::size_t>(call.maxHits) : std::numeric_limits<std::size_t>::max();
}

OwnRun::~OwnRun() = default;

std::size_t OwnRun::Run(const std::vector<JobFile>& files)
{
    run_.Started = Started;
    run_.CancelRequested = CancelRequested;
    return run_.Run(files);
}

}  // namespace tessarine::batch
