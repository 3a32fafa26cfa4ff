#pragma once

#include "platform/String.h"

namespace tessarine::batch
{

/// Makes the first SIGINT or SIGTERM a wish to stop before the next file, and the second one the end of the process at
/// once, with exit status 130 and a line on standard error that names the file in work. Files are saved all or nothing,
/// so no end leaves half a file; nor does it leave the new file that a save had begun. On Windows Ctrl-C and Ctrl-Break
/// take the signals' place.
void WatchForCancel();

/// True from the first signal on.
bool IsCancelRequested();

/// The file that the second signal would name; an empty path stands for none.
void SetFileInWork(const String& path);

}  // namespace tessarine::batch
