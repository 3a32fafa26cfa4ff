#include "batch/JobProject.h"

#include "batch/BatchCall.h"
#include "model/Project.h"
#include "platform/Locale.h"

namespace tessarine::batch
{

void FillProject(Project& project, const BatchCall& call)
{
    // One setting for all pairs: the command line has no means to tell pairs apart.
    const auto setting = std::make_shared<OptionSetting>(call.setting);
    for (const TextPair& pair : call.pairs)
        project.FindAndReplaceList->Add(pair.find, pair.with, setting, project.shared_from_this());

    ProjectOptions& options = *project.options;
    options.RequiredFindAndReplaceCount = call.count;
    options.BackupMode = call.backup;
    options.KeepOriginalFileDate = call.keepDate;
    options.ProcessReadonlyFiles = call.readOnly;
    options.Include_Subfolders = call.recurse;
    options.RestartApplicationAfterFiles = call.restartAfter;
    options.RevisionDocumentPropertyName = call.revision;
    // The run reads the step under the system's locale, so it is handed over as that locale writes it.
    if (!call.revision.empty())
        options.RevisionDocumentPropertyIncrimentedBy = TextFromNumber(call.revisionBy);
}

}  // namespace tessarine::batch
