#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "files/FileDescriptor.h"
#include "platform/NativePath.h"
#include "platform/String.h"

namespace tessarine
{

class HeldFolder;

/// Which file it is, whatever path leads to it: two hard links to one file have the same.
struct FileIdentity {
    std::uint64_t device = 0;  ///< On Windows the volume's serial number.
    std::uint64_t file = 0;    ///< The inode number, on Windows the file's index on its volume.
    bool operator==(const FileIdentity&) const = default;
};

/// What the system knows of a file that tells whether somebody has touched it. As long as a file's state stays equal
/// it has been neither replaced, written nor cut, nor have its permissions or its number of names changed, except
/// within one tick of the file system's clock (see OpenedFile).
struct FileState {
    FileIdentity identity;
    std::uint64_t size = 0;       ///< In bytes.
    std::int64_t lastWrite = 0;   ///< Of the content. Nanoseconds since 1970, so the next.
    std::int64_t lastChange = 0;  ///< Of the content or of anything else about the file. Programs hardly ever set it.
    bool operator==(const FileState&) const = default;
};

/// What stands under a path.
enum class FileKind {
    File,
    Folder,
    Link,  ///< Only where a link itself is looked at.
    Other  ///< A pipe, a device.
};

/// The state and what else is asked of a file.
struct FileFacts {
    FileKind kind = FileKind::Other;
    FileState state;
    std::uint64_t names = 0;  ///< How many names (hard links) it has.
    std::uint32_t mode = 0;   ///< As FileAttributes::mode.

    /// Who owns it, as text without blanks: the number of the user, on Windows the security identifier. Only where it
    /// was asked for.
    std::string owner = {};
};

/// What a look at a file is to tell: finding the owner takes calls of its own on Windows.
enum class Look { WithoutOwner, WithOwner };

/// The status of an open file. Nothing when the system doesn't tell; errno says why, so below.
std::optional<FileFacts> StatusOf(NativeFile file, Look look = Look::WithoutOwner);

/// Of what a path leads to, links followed.
std::optional<FileFacts> StatusAt(const NativeString& path, Look look = Look::WithoutOwner);

/// Of what stands under a name in an open folder; of a link that of the link itself.
std::optional<FileFacts> StatusIn(const HeldFolder& folder, const NativeString& name, Look look = Look::WithoutOwner);

/// Of what a name in an open folder leads to, links followed.
std::optional<FileFacts> StatusThrough(const HeldFolder& folder, const NativeString& name);

/// The states alone, in the same way.
std::optional<FileState> FileStateOf(NativeFile file);
std::optional<FileState> FileStateOf(StringView path);  ///< Nothing also for a path that can't be one.
std::optional<FileState> FileStateIn(const HeldFolder& folder, const NativeString& name);

/// That of an open file whose identity is known: an open file keeps it, and on Windows the volume's part of it takes a
/// call of its own, which under Wine costs more than opening a file.
std::optional<FileState> FileStateOf(NativeFile file, const FileIdentity& identity);

}  // namespace tessarine
