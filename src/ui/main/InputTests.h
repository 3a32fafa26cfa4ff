#pragma once

#include <cstdint>

#include "platform/String.h"

/// Tests of the paths that the user has typed.
namespace tessarine
{

/// What ValidateFile and ValidateFolder find.
namespace InputTest
{
inline constexpr std::int32_t Empty = 0;
inline constexpr std::int32_t FolderNotFound = 1;  ///< Of ValidateFolder alone.
inline constexpr std::int32_t FileNotFound = 2;    ///< Or the path has no dot. Of ValidateFile alone.
inline constexpr std::int32_t OtherExtension = 3;  ///< Of ValidateFile alone.
inline constexpr std::int32_t Valid = 4;
}  // namespace InputTest

/// `extensions`: those allowed, with their dots, separated by ";"; case does not count.
std::int32_t ValidateFile(const String& path, const String& extensions);

std::int32_t ValidateFolder(const String& path);

}  // namespace tessarine
