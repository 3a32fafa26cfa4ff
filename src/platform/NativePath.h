#pragma once

#include <optional>
#include <string>

#include "platform/String.h"

namespace tessarine
{

/// A path as the system takes it. Raises `FileNotFound` for a path with a NUL: the system would cut it there and take
/// it for another file's. Whoever hands a path to the system gets it from here or from the function below.
std::string NativePath(StringView path);

/// The same, nothing for a path with a NUL: for questions about a file, whose answer is then no.
std::optional<std::string> NativePathIfValid(StringView path);

}  // namespace tessarine
