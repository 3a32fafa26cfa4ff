#pragma once

#include <cstdint>
#include <functional>

#include "platform/String.h"

namespace tessarine
{

/// Where a job takes its files from: a copy of what its options say, for a count that outlives them.
struct FileChoice {
    bool isListed = false;  ///< By the file `list`, not in `folder`.
    String folder{};
    bool withSubfolders = false;
    String list{};
    String patterns{};  ///< As ProjectOptions::ComaSepAllowedExtensions.
};

/// What the files of a choice come to.
struct FileTotals {
    bool isThere = false;  ///< The folder or the list.
    std::int64_t files = 0;
    std::int64_t readOnly = 0;  ///< Of them.
    std::int64_t unreadFolders = 0;
    std::int64_t hiddenByLineFeeds = 0;  ///< See FileWalk::HiddenByLineFeeds.
    bool operator==(const FileTotals&) const = default;
};

/// Counts the files that a run over the choice would take. Looks at folders and files alone, logs nothing and never
/// raises, so that it may run on a thread of its own, beside anything. `isToStop` is asked before each file; a count
/// that was stopped tells what it has counted so far.
FileTotals CountFiles(const FileChoice& choice, const std::function<bool()>& isToStop);

}  // namespace tessarine
