#pragma once

#include <cstdint>
#include <vector>

#include "batch/BatchCall.h"
#include "platform/String.h"
#include "report/FileReport.h"

namespace tessarine::batch
{

/// One file of a job, in the order in which the files are reported.
struct JobFile {
    String path;              ///< As it was named, or found in a folder.
    String refusal;           ///< Not empty: the file is not processed but reported as failed, for this reason.
    std::int64_t number = 0;  ///< Of one share of a job: its place in the whole job, from 1.
};

/// The report of a file that is refused.
FileReport RefusedFile(const JobFile& file);

/// The files of a job, as CollectFiles finds them.
struct CollectedFiles {
    std::vector<JobFile> files;
    std::int64_t skippedLinks = 0;  ///< Links to folders that were not followed.
};

/// The files that the call names, each once however often and by whichever way it is named, in the order of their first
/// mention.
///
/// A file named on the command line or in the list is taken whatever its name. A folder gives its files that match a
/// pattern of the call, before those of its subfolders, without the lock files of programs that have a presentation
/// open (IsLockFileName) and the resource forks "._…" of other systems. A lock file that is named is refused. What is
/// hidden (a name that begins with a dot) is left out unless the call takes it, and what matches one of its patterns of
/// excluded names always; that holds for subfolders as for files, and never for what is named.
///
/// Links to subfolders are followed only if the call says so, and each folder then once, so that a link to a parent
/// ends. A path that names nothing is refused with "File not found.", except where backups are wanted: a lost file may
/// still have one. A folder that can't be read to its end is refused itself, with the reason.
///
/// Raises what reading the list raises, and `InvalidPatternString` for a pattern that is not valid; no file has been
/// looked at then.
CollectedFiles CollectFiles(const BatchCall& call);

/// Refuses each file whose backup would overwrite a file of the job, or the backup of a file before it: "a.pptx" and
/// "a.pptm" both have the backup "a..bak".
void RefuseSharedBackups(std::vector<JobFile>& files);

}  // namespace tessarine::batch
