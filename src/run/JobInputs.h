#pragma once

#include <cstdint>
#include <vector>

#include "platform/String.h"

/// What a job may take, and the tests of the paths that it names. Extensions stand with their dots, separated by ";".
namespace tessarine
{

/// The one file pattern that a job is offered: presentations of every kind.
inline constexpr StringView PresentationPattern = u"*.Ppt*";

inline constexpr StringView PairListExtensions = u".CSV;.TAB;.XLS";  ///< Of a list of pairs.
inline constexpr StringView FileListExtensions = u".TXT";            ///< Of a list of files.

/// The patterns of a job, which it holds in one text, separated by ";".
std::vector<String> PatternsIn(StringView patterns);

/// Whether the path has one of the extensions; case does not count. The extension begins at the last dot of the path.
bool HasExtension(StringView path, StringView extensions);

/// What ValidateFile and ValidateFolder find.
namespace InputTest
{
inline constexpr std::int32_t Empty = 0;
inline constexpr std::int32_t FolderNotFound = 1;  ///< Of ValidateFolder alone.
inline constexpr std::int32_t FileNotFound = 2;    ///< Or the path has no dot. Of ValidateFile alone.
inline constexpr std::int32_t OtherExtension = 3;  ///< Of ValidateFile alone.
inline constexpr std::int32_t Valid = 4;
}  // namespace InputTest

/// Tests whether a file is there and has one of the extensions, in this order.
std::int32_t ValidateFile(const String& path, StringView extensions);

/// Tests whether a folder is there.
std::int32_t ValidateFolder(const String& path);

}  // namespace tessarine
