#pragma once

namespace tessarine::batch
{

/// Makes the first SIGINT or SIGTERM a wish to stop before the next file, and the second one the end of the process at
/// once, with exit status 130. Files are saved all or nothing, so no end leaves half a file.
void WatchForCancel();

/// True from the first signal on.
bool IsCancelRequested();

}  // namespace tessarine::batch
