#pragma once

#include <vector>

#include "platform/String.h"

/// What files and folders mean that are dropped on the window together.
namespace tessarine
{

enum class DropKind {
    Folder,         ///< One folder: of the presentations.
    Presentations,  ///< One or more, each of which a job would take.
    PairList,       ///< One file that may hold a list of pairs.
    FileList,       ///< One text file, which may list presentations.
    Project,        ///< One project file.
    Unknown,        ///< Anything else, and a mixture.
};

/// Tells by their names; presentations and folders must be there.
DropKind KindOfDrop(const std::vector<String>& paths);

/// A text file that lists these paths, for a job to take its files from: a new one in `folder`, which is made when it
/// is missing, or one in there that lists the same. Raises as ReplacementFile does.
String FileListOf(const std::vector<String>& paths, const String& folder);

}  // namespace tessarine
