#pragma once

#include <cstdint>
#include <functional>

#include "platform/String.h"

namespace tessarine
{

/// Number of the per-user folder for the data of applications.
inline constexpr std::int32_t ApplicationDataFolderNumber = 26;

/// Path of a special folder of the system, without a trailing separator; empty when the system has no folder of that
/// number.
/// On Linux only ApplicationDataFolderNumber exists: $XDG_DATA_HOME when it is an absolute path, else ".local/share" in
/// the home folder.
String GetSpecialFolderPath(std::int32_t folder);

using SpecialFoldersPort = std::function<String(std::int32_t folder)>;

/// Has GetSpecialFolderPath ask `port` in place of the system, and returns what it asked before. An empty port brings
/// the system back.
SpecialFoldersPort SetSpecialFolders(SpecialFoldersPort port);

}  // namespace tessarine
