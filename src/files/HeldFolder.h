#pragma once

#include "files/FileDescriptor.h"
#include "platform/NativePath.h"

namespace tessarine
{

/// A folder that is held open, so that work in it by names stays in it whatever its path leads to later. On Windows
/// nobody can rename, move or delete it meanwhile.
class HeldFolder
{
public:
    HeldFolder() = default;  ///< Isn't open.

    /// Opens the folder, to be flushed if this process may do that, else for its names alone. An empty path is the
    /// current folder. Not open on failure, with the reason in errno.
    explicit HeldFolder(const NativeString& path);

    /// Takes over a folder that is open already.
    HeldFolder(FileDescriptor folder, NativeString path);

    bool IsOpen() const { return folder_.IsOpen(); }
    NativeFile get() const { return folder_.get(); }

    /// The path of a name in the folder, by the path that it was opened by. For texts; on Windows for the system, too,
    /// as it leads to the same place while the folder is held.
    NativeString PathOf(const NativeString& name) const { return path_ + name; }

private:
    FileDescriptor folder_;
    NativeString path_;  // with a separator at its end, or empty
};

}  // namespace tessarine
