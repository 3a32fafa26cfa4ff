#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>

/// Writes down, in order, what the program did to files, so that a power cut can be played through afterwards. All of
/// these do nothing unless the environment names a file for the record.
namespace tessarine::torture::record
{

/// True when there is a record to write; spares the system calls that finding out the rest takes.
bool IsWanted();

/// True when the path, from the folder of a descriptor (or AT_FDCWD), leads to something. To be asked before the call.
bool IsThere(int folder, const char* path);

/// A file was opened: made, when it was not there, or cut off to nothing.
void Opened(int descriptor, int folder, const char* path, bool wasThere, int flags);

void Written(int descriptor, std::uint64_t offset, const void* bytes, std::size_t count);
void CopiedFrom(int source, std::uint64_t sourceOffset, int target, std::uint64_t offset, std::size_t count);
void CutOff(int descriptor, std::uint64_t length);
void Flushed(int descriptor);
void ModeSet(int descriptor, mode_t mode);
void Renamed(int fromFolder, const char* from, int toFolder, const char* to, bool exchanged);
void Linked(int folder, const char* path);  ///< The new name, which is there by now.
void Removed(int folder, const char* path);

}  // namespace tessarine::torture::record
