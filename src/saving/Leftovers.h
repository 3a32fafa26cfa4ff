#pragma once

#include <cstddef>

#include "platform/NativePath.h"
#include "platform/String.h"

/// The temporary files that saves and copies write (NewFile), when nobody takes them away.
namespace tessarine
{

/// True for the name (without folder) of a temporary file of a save: ".tessarine-" and six letters or digits.
bool IsNewFileName(NativeStringView name);

/// The name that a file had before its save changed its place with the new file (NewFile::ChangePlaces on Windows): the
/// temporary name without what follows the file's own. Empty for any other name.
NativeStringView NameBeforeSave(NativeStringView temporaryName);

/// Removes from a folder the temporary files that killed processes have left: files of this user (of anybody, for the
/// superuser) that have such a name and that nobody holds a lock on, as their writers do while they live. Gives their
/// number. A file that a save had moved aside, and whose place is empty, gets its place back. Never raises: what can't
/// be removed stays, and so does everything where the system has no locks.
std::size_t RemoveLeftovers(StringView folder) noexcept;

/// Removes the temporary files that this process has in work, for a process that is about to end itself at once. May be
/// called from a signal's handler. A save that was under way fails after that; a file that has taken its place already
/// stays, and so does the copy of a write in place (InPlaceWrite), from which the next start completes it.
void RemoveNewFilesNow() noexcept;

}  // namespace tessarine
