#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/String.h"

/// What the run does to files. Paths are the platform's own, as text. Failures carry the classic file numbers
/// (53 file not found, 70 permission denied, 76 path not found, 61 disk full, 57 device I/O) and a text that names the
/// path.
namespace tessarine
{

/// A directory search that sees hidden files too: true when the path names a file (not a folder). An empty path is
/// false.
bool FileExists(StringView path);

/// True when the path names a folder.
bool FolderExists(StringView path);

/// Makes a folder with all of its missing parents. False when it can't be made; never raises.
bool EnsureFolderExists(StringView path);

/// Full paths of the files directly in a folder, in a stable order. Raises 76 when the folder can't be read.
std::vector<String> FilesOfFolder(StringView folder);

/// Full paths of the folders directly in a folder, in a stable order. Symbolic links to folders are left out, so that a
/// walk ends.
std::vector<String> SubfoldersOfFolder(StringView folder);

/// Whole content of a file. Raises 53, 70 or 57.
std::string ReadWholeFile(StringView path);

/// Copies a file's content and mode over `target`, all or nothing: on failure an older target stays as it was. An older
/// target is replaced even when it is read-only; a link stays and the file behind it is replaced.
void CopyFile(StringView source, StringView target);

void DeleteFile(StringView path);

/// Read-only, hidden, system and archive as the run knows them. On Linux a file is read-only when its owner has no
/// write bit, judged by the mode bits (so it holds for root too); the other attributes don't exist there.
namespace FileAttribute
{
inline constexpr std::int32_t Normal = 0;
inline constexpr std::int32_t ReadOnly = 1;
inline constexpr std::int32_t Hidden = 2;
inline constexpr std::int32_t System = 4;
inline constexpr std::int32_t Archive = 32;
}  // namespace FileAttribute

/// What GetAttributes read: the attribute bits, and beside them the platform's own form (the mode bits on Linux), so
/// that SetAttributes gives back exactly what was there.
struct FileAttributes {
    std::int32_t bits = FileAttribute::Normal;
    std::uint32_t mode = 0;
};

/// Raises 53 when the file is missing.
FileAttributes GetAttributes(StringView path);

/// Puts back what GetAttributes read; a file that still has it is left alone. Raises 53 or 70.
void SetAttributes(StringView path, const FileAttributes& attributes);

/// Attributes to 0: the file becomes writable for its owner.
void ClearAttributes(StringView path);

}  // namespace tessarine
