#pragma once

#include <cstddef>
#include <string_view>

#include "platform/String.h"

/// The temporary files that saves and copies write (NewFile), when nobody takes them away.
namespace tessarine
{

/// True for the name (without folder) of a temporary file of a save: ".tessarine-" and six letters or digits.
bool IsNewFileName(std::string_view name);

/// Removes from a folder the temporary files that killed processes have left: files of this user (of anybody, for the
/// superuser) that have such a name and that nobody holds a lock on, as their writers do while they live. Gives their
/// number. Never raises: what can't be removed stays, and so does everything where the system has no locks.
std::size_t RemoveLeftovers(StringView folder) noexcept;

/// Removes the temporary files that this process has in work, for a process that is about to end itself at once. May be
/// called from a signal's handler. A save that was under way fails after that; a file that has taken its place already
/// stays, and so does the copy of a write in place (InPlaceWrite), from which the next start completes it.
void RemoveNewFilesNow() noexcept;

}  // namespace tessarine
