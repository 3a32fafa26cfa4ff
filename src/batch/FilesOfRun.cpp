#include "batch/FilesOfRun.h"

#include <utility>

#include "batch/PreparedRun.h"
#include "batch/SavedJob.h"
#include "batch/SharePlan.h"
#include "batch/Shares.h"

namespace tessarine::batch
{

FilesOfRun CollectFilesOfRun(PreparedRun& run)
{
    const BatchCall& call = run.call;
    const auto collect = [&] { return run.isSavedJob() ? FilesOfSavedRun(*run.project, call) : CollectFiles(call); };
    std::optional<SharePlan> plan;
    if (!call.plan.empty())
        plan = PlanOf(call, collect);
    FilesOfRun taken{plan ? std::move(plan->collected) : collect()};
    std::vector<JobFile>& files = taken.collected.files;
    if (run.MakesBackups() && call.backupNaming == BackupNaming::First)
        RefuseSharedBackups(files);
    if (!call.shard)
        return taken;
    // The sizes of files that other shards change at the same time would give each shard a division of its own.
    const auto shares = plan                 ? SharesBySize(plan->sizes, call.shard->count)
                        : run.ChangesFiles() ? SharesByPath(files, call.shard->count)
                                             : SharesBySize(SizesOf(files), call.shard->count);
    taken.shard = TakeShare(files, shares, *call.shard);
    return taken;
}

}  // namespace tessarine::batch
