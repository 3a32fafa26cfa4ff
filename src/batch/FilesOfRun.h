#pragma once

#include <optional>

#include "batch/JobFiles.h"
#include "batch/Shard.h"

namespace tessarine::batch
{

/// The files that a run takes: those of the job, or one share of them.
struct FilesOfRun {
    CollectedFiles collected;
    std::optional<ShardFacts> shard{};
};

class PreparedRun;

/// Looks for the files of a prepared run, or takes them from its plan, and takes its share of them. A file whose backup
/// would overwrite another one is refused (RefuseSharedBackups).
FilesOfRun CollectFilesOfRun(PreparedRun& run);

}  // namespace tessarine::batch
