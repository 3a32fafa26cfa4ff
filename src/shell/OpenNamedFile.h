#pragma once

#include <cstdint>

#include "shell/OpenDoc.h"

namespace tessarine
{

/// Opens what a text, which is not empty, names as a file or folder, and gives the code. A name without a folder is
/// looked for in the root (on Windows of drive C), not in the current folder, which is whatever the start made it.
///
/// The shell of Windows sees to both by itself. On Linux `open` does not tell why it could not reach a file, so
/// `FileNotFound`, `PathNotFound` and `AccessDenied` are found out before, and then it is not called.
///
/// Raises `FileNotFound` for a name with a NUL, which would be taken for another one.
std::int32_t OpenNamedFile(const String& name, const DocumentOpenerPort& open);

}  // namespace tessarine
