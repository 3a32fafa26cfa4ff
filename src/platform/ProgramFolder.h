#pragma once

#include "platform/String.h"

namespace tessarine
{

/// Folder of this process's executable, without a trailing separator.
String ProgramFolder();

/// Folder of what comes with the program, its languages and its help, without a trailing separator: where the program
/// is installed, "share/tessarine" beside its "bin", wherever the two have been moved together. On Windows, and in the
/// folder that the program was built in, the program's own folder.
String DataFolder();

/// Has ProgramFolder answer with `folder`, for a process whose executable does not lie with the program's files, such
/// as a test. An empty one brings the executable's own folder back. Returns what was set before.
String SetProgramFolder(String folder);

}  // namespace tessarine
