#pragma once

#include <cstdint>

#include "files/FileDescriptor.h"
#include "files/HeldFolder.h"
#include "platform/NativePath.h"

/// The calls of the system that BackupFolder is made of. Names are those in its folder, and nothing is reached through
/// a link. What isn't open, and false, leave the reason in errno (ELOOP for a link).
namespace tessarine
{

FileDescriptor OpenRecordForReading(const HeldFolder& folder, const NativeString& name);    ///< Backups, too.
FileDescriptor OpenRecordForAppending(const HeldFolder& folder, const NativeString& name);  ///< Makes a missing one.
FileDescriptor OpenForMode(const HeldFolder& folder, const NativeString& name);

enum class RecordLocking { Locked, HeldByAnother, Impossible };

/// Locks an open record against other processes of this program.
RecordLocking TryToLockRecord(NativeFile record);
void UnlockRecord(NativeFile record);

/// Flushes what was written to the disk.
bool FlushContent(NativeFile file);

/// What of a mode (FileAttributes::mode) is in the other one, too: nobody gets more than either gives.
std::uint32_t NarrowerMode(std::uint32_t mode, std::uint32_t other);

/// Makes a new file belong to whom the old one belongs, with its mode.
bool GiveOwnerAndMode(NativeFile oldFile, NativeFile newFile);

/// Deletes what has a name; of a link the link itself.
bool DeleteIn(const HeldFolder& folder, const NativeString& name);

}  // namespace tessarine
