#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "support/PackageReader.h"

/// Compares packages before and after a job, on bytes. It knows what a replacement may change and reports everything
/// else with the entry, the offset in the inflated bytes and forty bytes of both sides.
namespace tessarine::test
{

/// A pair of the job that ran. Hits are looked for without regard to case unless `matchCase` is set, and any number of
/// them may have been replaced: which ones is for other tests to say.
struct Replacement {
    String find;
    String with;
    bool matchCase = false;
};

/// One place where two packages differ and should not.
struct Difference {
    std::string entry;
    std::size_t offset = 0;  ///< In the inflated bytes of `entry` before.
    std::string before;      ///< Up to forty bytes from there; of the other side from the same place in its structure.
    std::string after;
    std::string reason;
};
void PrintTo(const Difference& difference, std::ostream* out);

/// Names of the entries whose inflated bytes differ, or that only one side has; in the order of the directory before.
std::vector<std::string> EntriesThatDiffer(const PackageReader& before, const PackageReader& after);

/// Where the headers differ: names, their order, dates, attributes, extra fields, comments, methods; and the packed
/// bytes of every entry whose inflated bytes are equal.
std::vector<Difference> PackagingDifferences(const PackageReader& before, const PackageReader& after);

/// What differs beyond the replacements. Allowed for a hit:
/// - slides, notes, layouts, masters: characters of a:t. The new text stands in the first run that the hit touched; the
///   others lose their part of the hit and disappear when nothing is left of them. The marks err and dirty of touched
///   runs may change, a touched field may become a run. All other bytes of the part are equal. A hit on a paragraph's
///   end, a replacement with line ends, and header and footer placeholders (which are put as a whole) are compared by
///   text alone.
/// - relationships: targets; new ones at the end whose target comes from another one's; the link elements that use
/// those.
/// - core.xml, app.xml: characters of elements. custom.xml: characters and kinds of values.
std::vector<Difference> UnexpectedDifferences(const PackageReader& before, const PackageReader& after,
                                              const std::vector<Replacement>& replacements);

/// The same for two texts of one entry; its name decides which rules hold.
std::vector<Difference> UnexpectedDifferencesIn(const std::string& entry, std::string_view before,
                                                std::string_view after, const std::vector<Replacement>& replacements);

/// For EXPECT_TRUE: packaging and content are as the replacements allow. The message lists what is not.
testing::AssertionResult OnlyTheTextDiffers(const PackageReader& before, const PackageReader& after,
                                            const std::vector<Replacement>& replacements);

/// For EXPECT_TRUE: the files are equal byte by byte.
testing::AssertionResult SameBytes(const PackageReader& before, const PackageReader& after);

}  // namespace tessarine::test
