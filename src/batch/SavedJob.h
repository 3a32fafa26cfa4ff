#pragma once

#include <memory>
#include <string>
#include <vector>

#include "batch/JobFiles.h"
#include "platform/String.h"

namespace tessarine
{
class FindAndReplaceItems;
class Project;
}  // namespace tessarine

/// Jobs in project files. What is not possible with one is refused (Refusal.h).
namespace tessarine::batch
{

struct BatchCall;

/// Loads a project file into a fresh project.
void LoadJob(Project& project, const String& path);

/// Where a saved job's pairs come from (model/JobProperties.h).
struct SavedSource {
    bool isKnown = false;     ///< False when the job lacks the properties that tell it.
    bool isExternal = false;  ///< The pairs are those of the list file, not the job's own.
    String path;              ///< Of the list file.
};
/// The source of the project's pairs, not yet looked at.
SavedSource SourceOf(const Project& project);

/// Makes a loaded project ready to run as the desktop's window does between opening a job and starting it: the options
/// become what the window's controls make of them, and the pairs are checked. Adds to `notes` what the user should know
/// before it starts, a line each. Gives the pairs of a list file; null for the project's own.
std::shared_ptr<FindAndReplaceItems> PrepareSavedRun(Project& project, const BatchCall& call,
                                                     std::vector<std::string>& notes);

/// The files of a project made ready, which is after its pairs: what is wrong is told in the order in which the window
/// tells it. Paths of the call take the place of the job's folder or list of files. May be no file.
CollectedFiles FilesOfSavedRun(Project& project, const BatchCall& call);

/// Completes a filled project to a job that the desktop opens: where the files are, and the custom properties. The
/// call's path must not be a file.
void FillSavedJob(Project& project, const BatchCall& call);

/// Saves a project and gives the path as it was named, with the extension that the save may have added.
String SaveJob(Project& project, const String& path);

}  // namespace tessarine::batch
