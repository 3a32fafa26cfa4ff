#include "batch/PreparedRun.h"

#include <utility>

#include "batch/JobJson.h"
#include "batch/JobProject.h"
#include "batch/ListFiles.h"
#include "batch/Locations.h"
#include "batch/SavedJob.h"

namespace tessarine::batch
{

PreparedRun::PreparedRun(const BatchCall& asCalled, std::shared_ptr<EngineOfRun> engine)
    : call(asCalled), project(std::move(engine)), isSavedJob_(asCalled.command == Command::Run)
{
    if (isSavedJob_)
        TakeSavedJob();
    else
        TakeCall();
}

Json PreparedRun::ToJson() const
{
    return RunJson(list ? *list : *project->FindAndReplaceList, *project);
}

void PreparedRun::TakeCall()
{
    FillProject(*project, call);
    if (call.list || call.pairFile) {
        notes = TakeListPairs(*project, call);
        SwitchOn(call.setting, "all");  // each pair has its own places; a report leaves out those not searched
    }
    if (call.pairFile != u"-")
        pairList = call.pairFile.value_or(call.list.value_or(String()));
}

void PreparedRun::TakeSavedJob()
{
    // Loaded into a fresh project: custom properties of a file are appended to those that are there.
    LoadJob(*project, call.job);
    list = PrepareSavedRun(*project, call, notes);
    if (const SavedSource source = SourceOf(*project); source.isExternal)
        pairList = source.path;
    project->options->BackupMode = project->options->BackupMode || call.backup;
    call.command = call.replacesOfJob ? Command::Replace : Command::Find;
    SwitchOn(call.setting, "all");  // as above
}

}  // namespace tessarine::batch
