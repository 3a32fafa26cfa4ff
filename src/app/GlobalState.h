#pragma once

#include <memory>

#include "model/Project.h"
#include "platform/String.h"

/// The process-wide state, beside ApplicationDataFolder. It lives from the program's entry to the end of the process.
namespace tessarine
{

/// The job in the main window. Made once by the program's entry; opening another project file loads into this same
/// object.
extern std::shared_ptr<Project> CurrentProject;

/// File name of the language file, such as "English.lng", without a folder.
extern String CurrentLanguageFile;

/// True while the run being launched only finds.
extern bool IsSearchRun;

/// True when runs use the engine that comes with the program, and no installed PowerPoint. Settled by the program's
/// entry.
extern bool IsBuiltInEngine;

}  // namespace tessarine
