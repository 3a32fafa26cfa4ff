#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

#include "saving/JournalEntries.h"

namespace tessarine
{

/// How far a write into an old file itself has come, judged by the file's content.
enum class WriteProgress {
    NotBegun,   ///< The old content.
    HalfDone,   ///< Nothing but blocks of the old and of the new content.
    Done,       ///< The new content.
    Unrelated,  ///< Something else: somebody has written into the file since.
};

/// Reads bytes from `offset`, as many as the buffer takes or the file has, and gives how many.
using BlockReader = std::function<std::size_t(std::uint64_t offset, std::span<std::byte> buffer)>;

/// Compares a file block by block with what was noted of its old content, and with the complete new one. What the
/// readers raise passes through.
WriteProgress ProgressOfWrite(const WriteEntry& entry, const BlockReader& file, std::uint64_t fileSize,
                              const BlockReader& copy);

}  // namespace tessarine
