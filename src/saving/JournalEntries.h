#pragma once

#include <time.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "saving/JournalText.h"

/// What the lines of a journal say. Each kind has its line, and `From…` gives nothing for a line of another kind or
/// with values that can't be right.
namespace tessarine
{

/// What tells whether a file is still the one that was noted, with the content that it had. Without the device: its
/// number need not be the same after the system has started anew.
struct FileMark {
    std::uint64_t file = 0;  ///< The number of the inode.
    std::uint64_t size = 0;  ///< In bytes.
    timespec lastWrite{};

    bool operator==(const FileMark& other) const;
};

/// "file": a file whose mode and dates a run changes for a while.
struct FileEntry {
    std::string path;  ///< From the root on.
    FileMark mark;     ///< As it was before.
    std::uint32_t mode = 0;
    struct Dates {
        timespec lastAccess;
        timespec lastWrite;
    };
    std::optional<Dates> dates;  ///< Only when they are to be put back.

    JournalFields Fields() const;
    static std::optional<FileEntry> From(const JournalFields& fields);
};

/// "content": a content that the run has given, or was about to give, to the file of the line before.
struct ContentEntry {
    FileMark mark;

    JournalFields Fields() const;
    static std::optional<ContentEntry> From(const JournalFields& fields);
};

/// "write": a new content that is written into a file itself.
struct WriteEntry {
    std::string path;  ///< From the root on, without links.
    FileMark mark;     ///< As it was before the first byte.
    std::string copy;  ///< Path of the complete new content, from the root on.
    FileMark copyMark;
    std::vector<std::uint32_t> oldBlocks;  ///< CRC-32 of each block of the old content,
    std::vector<std::uint32_t> newBlocks;  ///< and of the new one.

    static constexpr std::size_t BlockLength = 4096;  ///< In bytes; the last block may be shorter.

    JournalFields Fields() const;
    static std::optional<WriteEntry> From(const JournalFields& fields);
};

}  // namespace tessarine
