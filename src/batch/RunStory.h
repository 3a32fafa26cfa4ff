#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/String.h"
#include "report/FileReport.h"

namespace tessarine::batch
{

/// What the end of a text report tells of the files before it. Memory holds the totals and the first failures alone.
class RunStory
{
public:
    /// Fewer files than this leave their lines on the screen, and have no story.
    static constexpr std::int64_t fewestFiles = 20;
    /// How many failures, pairs and pairs without a hit the end of a report names: together they fit on a screen.
    static constexpr std::size_t mostOfAKind = 7;

    /// A file that failed, with its reason.
    struct Failed {
        String path;
        String error;
    };
    /// One pair in all files.
    struct Total {
        String find;
        String replace;
        std::int64_t occurrences = 0;
        std::int64_t files = 0;  ///< In which it occurs.
    };

    void Add(const FileReport& file);

    const std::vector<Failed>& failures() const { return failures_; }  ///< The first ones, mostOfAKind at most.
    std::vector<Total> FoundPairs() const;                             ///< All that occur, the most frequent first.
    std::vector<String> TextsFoundNowhere() const;                     ///< In the order of the pairs.

private:
    std::vector<Failed> failures_;
    std::vector<Total> totals_;  // in the order of the pairs
};

}  // namespace tessarine::batch
