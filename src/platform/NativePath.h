#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/String.h"

namespace tessarine
{

/// A path in the system's own form: bytes, on Windows UTF-16 in the system's own characters.
#ifdef _WIN32
using NativeString = std::wstring;
using NativeStringView = std::wstring_view;
#else
using NativeString = std::string;
using NativeStringView = std::string_view;
#endif

/// A path as the system takes it; on Windows one that is too long for a plain path gets the form without a limit
/// (`\\?\...`). Raises `FileNotFound` for a path with a NUL: the system would cut it there and take it for another
/// file's. Whoever hands a path to the system gets it from here or from the function below.
NativeString NativePath(StringView path);

/// The same, nothing for a path with a NUL: for questions about a file, whose answer is then no.
std::optional<NativeString> NativePathIfValid(StringView path);

/// The way back: a path of the system as text, as the model has it and people read it.
String PathText(NativeStringView path);

/// True for a path (UTF-8) from the root on, on Windows from a drive or a share on.
bool IsFullPath(std::string_view path);

/// An ASCII text as part of a path, such as the name of a file that the program makes.
NativeString NativeName(std::string_view ascii);

}  // namespace tessarine
