#pragma once

#include <time.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "files/FileDescriptor.h"
#include "platform/NativePath.h"
#include "saving/FileDateTime.h"
#include "saving/JournalEntries.h"

/// What the journals look at in an open file, and put back. Nothing and false leave the reason in errno.
namespace tessarine
{

std::optional<FileMark> MarkOf(NativeFile file);

/// The device and the mark of the file that a path leads to.
bool LookAt(const NativeString& path, std::uint64_t& device, FileMark& mark);

/// The dates that a run is to put back, as the journal has them: moments, and not what local clocks showed.
FileEntry::Dates DatesOf(const FileTimes& times);

/// Whether it is a plain file of this process's user.
bool IsOwnFile(NativeFile file);

/// Opens a file that a journal names, to put its mode and dates back; links followed.
FileDescriptor OpenToPutBack(const NativeString& path);

/// Opens a file that a journal names, to read it or to write into it, but not through a link.
FileDescriptor OpenToComplete(const NativeString& path);
FileDescriptor OpenCopy(const NativeString& path);  ///< The same to read it only.

/// Sets a file's times, and its mode (as FileAttributes::mode).
bool PutDates(NativeFile file, const timespec& lastAccess, const timespec& lastWrite);
bool PutMode(NativeFile file, std::uint32_t mode);

/// Whether a mode is what a run has made of the original one to write into the file (ClearAttributes).
bool IsModeOfRun(std::uint32_t mode, std::uint32_t original);

/// Removes a file by its path.
void RemoveFile(const NativeString& path) noexcept;

/// Renames a file to a name in the same folder that no other file has.
bool RenameFile(const NativeString& from, const NativeString& to);

/// CRC-32 of each block of the file, as a WriteEntry holds them.
std::optional<std::vector<std::uint32_t>> ReadBlocks(NativeFile file);

/// Flushes the folder that a file lies in, as far as the file system can do that.
void FlushFolderOf(const NativeString& path);

}  // namespace tessarine
