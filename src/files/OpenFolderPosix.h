#pragma once

#include <string>

#include "files/FileDescriptor.h"

namespace tessarine
{

/// Opens a folder: to be flushed if this process may read it, else for its names alone. Not open on failure, with the
/// reason in errno. A relative path starts at the folder `from`, or where the process is (AT_FDCWD).
FileDescriptor OpenFolder(int from, const std::string& path);

}  // namespace tessarine
