#pragma once

#include <vector>

#include "platform/String.h"

namespace tessarine::batch
{

/// Makes the first SIGINT or SIGTERM a wish to stop before the next file, and the second one the end of the process at
/// once, with exit status 130 and a line on standard error that names the files in work. Files are saved all or
/// nothing, so no end leaves half a file; nor does it leave the new file that a save had begun. On Windows Ctrl-C and
/// Ctrl-Break take the signals' place.
void WatchForCancel();

/// True from the first signal on.
bool IsCancelRequested();

/// The files that the second signal would name. From one thread at a time.
void SetFilesInWork(const std::vector<String>& paths);

}  // namespace tessarine::batch
