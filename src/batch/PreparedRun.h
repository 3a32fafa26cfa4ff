#pragma once

#include <memory>
#include <string>
#include <vector>

#include "batch/BatchCall.h"
#include "batch/EngineOfRun.h"
#include "batch/ReportJson.h"
#include "model/Project.h"

namespace tessarine::batch
{

/// A find, a replace or a saved job, ready to run over files: its project with pairs and options.
class PreparedRun
{
public:
    /// Refuses (Refusal.h) a call that is not possible, and a saved job that can't be loaded or run.
    PreparedRun(const BatchCall& call, std::shared_ptr<EngineOfRun> engine);

    BatchCall call;  ///< With Find or Replace as its command, and all locations where the pairs have their own.
    ProjectOwner project;
    std::shared_ptr<FindAndReplaceItems> list;  ///< Null for the project's own pairs.
    String pairList;                            ///< The list file that the pairs came from, or empty.
    std::vector<std::string> notes;             ///< What the user should know before it starts, a line each.

    bool Replaces() const { return call.command == Command::Replace; }
    bool ChangesFiles() const { return Replaces() && !call.dryRun; }
    bool MakesBackups() const { return Replaces() && project->options->BackupMode; }  ///< Until an OwnRun is made.
    bool isSavedJob() const { return isSavedJob_; }

    /// All that decides what becomes of a file (RunJson).
    Json ToJson() const;

private:
    void TakeCall();
    void TakeSavedJob();

    bool isSavedJob_;
};

}  // namespace tessarine::batch
