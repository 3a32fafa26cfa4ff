#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "files/FileState.h"
#include "platform/String.h"

/// What the run does to files. Paths are the platform's own, as text; one with a NUL names no file (NativePath). Where
/// nothing else is said, failures are those of ClassicFileFailure: `FileNotFound`, `PathNotFound`, `PermissionDenied`,
/// `DiskFull`, `DeviceIO`, with a text that names the path.
namespace tessarine
{

/// True when the path names a file (not a folder), hidden ones included, or a link to one. An empty path is false.
bool FileExists(StringView path);

/// True when the path names a folder or a link to one.
bool FolderExists(StringView path);

/// Makes a folder with all of its missing parents. False when it can't be made; never raises.
bool EnsureFolderExists(StringView path);

/// The path from the root on, which means the same in every current folder. `.` in front goes, `..` and links stay;
/// on Windows `..` goes, too, as the system takes it out of any path.
/// Raises as ClassicFileFailure tells when a relative path has no current folder to count from.
String FullPathOf(StringView path);

/// What lies directly in a folder: the folder's path and the name of each entry, sorted by the bytes of their names,
/// hidden ones included. What is neither a file nor a folder (a pipe, a broken link) is left out.
struct FolderContent {
    std::vector<String> files;    ///< Links to files count as files.
    std::vector<String> folders;  ///< Without those below.

    /// Symbolic links to folders. A walk that follows them has to know which folders it has seen (VisitedFolders), as
    /// they may lead in circles.
    std::vector<String> linkedFolders;
};

/// Raises `PathNotFound` when the folder can't be read, or not to its end, for whatever reason: part of a folder is
/// never taken for the whole.
FolderContent ContentOfFolder(StringView folder);

/// The files of ContentOfFolder alone.
std::vector<String> FilesOfFolder(StringView folder);

/// Whole content of a file.
std::string ReadWholeFile(StringView path);

/// Deletes a file, a read-only one, too; of a link the link itself.
void DeleteFile(StringView path);

/// Read-only, hidden, system and archive as the run knows them. On Linux a file is read-only when its owner has no
/// write bit, judged by the mode bits (so it holds for root too); the other attributes don't exist there.
namespace FileAttribute
{
inline constexpr std::int32_t Normal = 0;
inline constexpr std::int32_t ReadOnly = 1;
inline constexpr std::int32_t Hidden = 2;    ///< Never set on Linux.
inline constexpr std::int32_t System = 4;    ///< Never set on Linux.
inline constexpr std::int32_t Archive = 32;  ///< Never set on Linux.
}  // namespace FileAttribute

/// What GetAttributes read: the attribute bits, and beside them the platform's own form (the mode bits on Linux, all
/// attributes on Windows), so
/// that SetAttributes puts back exactly what was there.
struct FileAttributes {
    std::int32_t bits = FileAttribute::Normal;
    std::uint32_t mode = 0;  ///< On Linux all twelve bits, with set-user, set-group and sticky.
    FileIdentity file = {};  ///< The file that they are of.
};

/// A file's attributes; of a link those of its target. `PermissionDenied` where this process holds another file under
/// the same path (FileLock).
FileAttributes GetAttributes(StringView path);

/// Puts back what GetAttributes read. A file that still has it is left alone, because only its owner may set a mode,
/// but others may run over it without a change. `PermissionDenied` for a path that leads to another file by now, unless
/// that is the new content of a save (KnownFile).
void SetAttributes(StringView path, const FileAttributes& attributes);

/// Sets the attributes to `Normal`: on Linux the file becomes writable for its owner, and its other mode bits stay. Of
/// the file whose attributes were read alone, as for SetAttributes; and never of another user's file through a link.
void ClearAttributes(StringView path, const FileAttributes& attributes);

}  // namespace tessarine
