#pragma once

#include <cstddef>
#include <vector>

#include "platform/String.h"

/// The list of titles that the document properties of a file keep: "TitlesOfParts" in packages, "document parts" in
/// binary presentations.
namespace tessarine::builtin
{

/// The title of a slide that has changed.
struct ChangedTitle {
    std::size_t slide;  ///< From 0.
    String before;
    String after;
};

/// Lets the list follow the slides, and gives the entries that have changed, in no order: one that is the old title of
/// a slide becomes the new one. The entries of slides come last in the list, one for each; where they do, each slide
/// has its own. In entries, line and paragraph breaks are blanks.
std::vector<std::size_t> FollowListedTitles(std::vector<String>& list, const std::vector<ChangedTitle>& changed,
                                            std::size_t slideCount);

}  // namespace tessarine::builtin
