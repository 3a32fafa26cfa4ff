#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "support/PackageCompare.h"

namespace tessarine::test
{

/// A stretch of the text before that became another text.
struct Hit {
    std::size_t start = 0;
    std::size_t end = 0;
    String with;
    std::size_t newStart = 0;  ///< Where the new text stands in the text after.
};

/// The hits that lead from one text to the other, leftmost first; nothing when no set of hits does. A replaced text is
/// not searched again.
std::optional<std::vector<Hit>> HitsBetween(StringView before, StringView after,
                                            const std::vector<Replacement>& replacements);

/// The same for link targets: percent escapes, kinds of slashes and a leading "file:///" don't matter.
bool TargetComesFrom(StringView before, StringView after, const std::vector<Replacement>& replacements);

/// The rules for parts with text bodies; offsets count in `before`.
std::vector<Difference> DrawingDifferences(std::string_view before, std::string_view after,
                                           const std::vector<Replacement>& replacements);

/// Whether two tags are the same element of a link, whose relationship or kind of target changed.
bool IsLinkChange(std::string_view before, std::string_view after);

/// A difference at an offset with forty bytes of both sides.
Difference DifferenceAt(std::string_view before, std::size_t offset, std::string_view after, std::size_t afterOffset,
                        std::string reason);

}  // namespace tessarine::test
