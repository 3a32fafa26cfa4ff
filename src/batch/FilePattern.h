#pragma once

#include <optional>

#include "platform/String.h"
#include "run/WildcardPattern.h"

namespace tessarine::batch
{

/// A file name pattern of a folder scan: `*`, `?`, `#` and `[...]` as in WildcardPattern, without regard to case. What
/// follows the last dot of the pattern is matched against the name's extension and the rest against the rest, so that
/// "*.ppt*" takes "a.pptx" and leaves its backup "a.ppt.bak" alone. A pattern without a dot is matched against the
/// whole name.
class FilePattern
{
public:
    /// Raises `InvalidPatternString` for a set that is not closed or a range that runs backwards.
    explicit FilePattern(StringView pattern);

    bool Matches(StringView fileName) const;  ///< A name alone, without its folder.

private:
    WildcardPattern stem_;                      // of the whole name when the pattern has no dot
    std::optional<WildcardPattern> extension_;  // nothing when the pattern has no dot
};

}  // namespace tessarine::batch
