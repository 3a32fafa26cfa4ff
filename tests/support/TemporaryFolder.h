#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>

#include "platform/String.h"

namespace tessarine
{

/// A new, empty folder, of a name that no other process uses, that goes away with all it holds, whatever the modes of
/// files and folders in it.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Full path, without a trailing separator.
    const String& Path() const { return path_; }

    /// Full path of a file or folder in it, be it there or not; `name` may hold separators.
    String PathOf(StringView name) const;

    /// Writes a file, with the folders on the way, and gives its full path.
    String Write(StringView name, const std::string& content = "content") const;

    /// Makes a folder, with those on the way, and gives its full path. One that is there already is left alone.
    String MakeFolder(StringView name) const;

private:
    String path_;
};

/// Content of a file, "<missing>" when there is none.
std::string ContentOf(StringView path);

/// The mode bits of a file, and a way to set them. Both raise std::runtime_error for a file that is missing. On Windows
/// a file that may be written has 0644 and a read-only one 0444, and bits for writing are all that is looked at.
mode_t ModeOf(StringView path);
void SetMode(StringView path, mode_t mode);

/// Cuts a file or adds zeros, which take no room on the disk. Raises std::runtime_error or
/// std::filesystem::filesystem_error when that can't be done.
void SetSize(StringView path, std::uint64_t bytes);

}  // namespace tessarine
