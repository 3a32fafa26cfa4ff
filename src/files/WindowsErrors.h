#pragma once

namespace tessarine
{

/// The errno value that stands for an error of Windows (as GetLastError gives it).
int ErrnoOf(unsigned long error);

/// Puts the last error of this thread into errno, for a caller that looks there. Gives false, so that a failing call
/// can be passed on in one line.
bool LeaveErrorInErrno();

}  // namespace tessarine
