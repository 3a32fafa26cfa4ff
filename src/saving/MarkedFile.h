#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "saving/JournalEntries.h"

/// What the journals look at in an open file (a descriptor). Nothing leaves the reason in errno.
namespace tessarine
{

std::optional<FileMark> MarkOf(int file);

/// Whether it is a plain file of this process's user.
bool IsOwnFile(int file);

/// Reads from `offset` (in bytes) until the buffer is full or the file ends, and gives how many bytes came.
std::optional<std::size_t> ReadAt(int file, std::uint64_t offset, std::span<std::byte> buffer);

/// CRC-32 of each block of the file, as a WriteEntry holds them.
std::optional<std::vector<std::uint32_t>> ReadBlocks(int file);

/// Flushes the folder that a file lies in, as far as the file system can do that.
void FlushFolderOf(const std::string& path);

}  // namespace tessarine
