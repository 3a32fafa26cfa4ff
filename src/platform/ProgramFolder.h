#pragma once

#include "platform/String.h"

namespace tessarine
{

/// Folder of this process's executable, without a trailing separator; what comes with the program lies in or below it.
String ProgramFolder();

/// Has ProgramFolder answer with `folder`, for a process whose executable does not lie with the program's files, such
/// as a test. An empty one brings the executable's own folder back. Returns what was set before.
String SetProgramFolder(String folder);

}  // namespace tessarine
