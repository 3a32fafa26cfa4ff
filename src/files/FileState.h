#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/String.h"

struct stat;  // of the system

namespace tessarine
{

/// Which file it is, whatever path leads to it: two hard links to one file have the same.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t file = 0;  ///< The inode number.
    bool operator==(const FileIdentity&) const = default;
};

/// What the system knows of a file that tells whether somebody has touched it. As long as a file's state stays equal
/// it has been neither replaced, written nor cut, nor have its permissions or its number of names changed, except
/// within one tick of the file system's clock (see OpenedFile).
struct FileState {
    FileIdentity identity;
    std::uint64_t size = 0;       ///< In bytes.
    std::int64_t lastWrite = 0;   ///< Of the content. Nanoseconds since 1970, so the next.
    std::int64_t lastChange = 0;  ///< Of the content or of anything else about the file. Can't be set by programs.
    bool operator==(const FileState&) const = default;
};

FileState StateFrom(const struct ::stat& status);

/// The state of a descriptor's file. Nothing when the system doesn't tell; errno says why, so below.
std::optional<FileState> FileStateOf(int descriptor);

/// The state of the file that a path leads to, links followed. Nothing also for a path that can't be one.
std::optional<FileState> FileStateOf(StringView path);

/// The state of what stands under a name in an open folder; of a link that of the link itself.
std::optional<FileState> FileStateIn(int folder, const std::string& name);

}  // namespace tessarine
