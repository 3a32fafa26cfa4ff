#pragma once

#include "platform/NativePath.h"
#include "platform/PathSeparator.h"
#include "platform/String.h"

namespace tessarine
{

/// The folder in a path: all up to and including the last separator, so that folder and name put together are the path
/// again. Empty for a name alone; a path that ends in a separator is all folder. The result borrows from `path`.
constexpr StringView FolderOf(StringView path)
{
    return path.substr(0, path.find_last_of(PathSeparators) + 1);
}

/// The same for a path as the system takes it.
constexpr NativeStringView FolderOf(NativeStringView nativePath)
{
    return nativePath.substr(0, nativePath.rfind(static_cast<NativeString::value_type>(PathSeparator)) + 1);
}

/// A file's name: what follows the last separator of its path. The result borrows from `path`.
constexpr StringView FileNameOf(StringView path)
{
    return path.substr(path.find_last_of(PathSeparators) + 1);
}

/// The same for a path as the system takes it.
constexpr NativeStringView FileNameOf(NativeStringView nativePath)
{
    return nativePath.substr(FolderOf(nativePath).size());
}

/// A folder without the one separator at its end, as messages show it. The root keeps its own.
constexpr StringView WithoutTrailingSeparator(StringView folder)
{
    const bool endsInSeparator = !folder.empty() && PathSeparators.find(folder.back()) != StringView::npos;
    return folder.size() > 1 && endsInSeparator ? folder.substr(0, folder.size() - 1) : folder;
}

}  // namespace tessarine
