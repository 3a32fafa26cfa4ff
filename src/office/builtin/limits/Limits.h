#pragma once

#include <cstddef>
#include <cstdint>

namespace tessarine::builtin
{

/// What the engine is willing to hold for one presentation. It is far more than real decks need: a hostile file fails
/// here (`FileCorrupt`, unless something else is said) before it has taken the machine's memory. Sizes are in bytes.
///
/// What is done with a part takes time in proportion to its size, and the limits keep the memory within twelve times
/// the largest part, as it is read or as edits leave it, 32 MiB, and the bytes of all parts that edits have changed.
struct Limits {
    std::uint64_t directoryBytes = 16u << 20;  ///< Directory of the zip file or compound file.
    std::uint32_t parts = 65535;               ///< Entries of the zip file.
    std::uint64_t partBytes = 64u << 20;       ///< One XML part, inflated.
    /// The work on one presentation: its parts, each counted once. Work goes by bytes, so that this is the limit of
    /// time for a pair in a place as well; a clock would refuse good files on slow machines.
    std::uint64_t packageXmlBytes = 1u << 30;
    /// Notes pages that several slides name, counted for each slide but the first: each walks all of the page. The same
    /// for layouts that are the title masters of several designs.
    std::uint64_t sharedPageBytes = 8u << 20;
    /// What is kept in memory of pages that were read. Beyond it nothing fails: a page is read again for each walk.
    /// Thousands of ordinary slides stay below.
    std::size_t keptBytes = 8u << 20;

    /// How many times its packed size a part may have, once it is larger than `alwaysUnpacked`. Markup of thousands of
    /// shapes that are alike gets to 200.
    std::uint32_t ratio = 500;
    std::uint64_t alwaysUnpacked = 8u << 20;

    std::uint32_t elements = 1u << 22;  ///< Of one part.
    /// Beyond so many, a part has no more than one element for each `bytesForElement` of its bytes.
    std::uint32_t denseElements = 1u << 17;
    std::uint32_t bytesForElement = 8;
    std::uint32_t depth = 512;       ///< Elements in elements.
    std::uint32_t attributes = 256;  ///< Of one element.
    std::uint32_t nesting = 128;     ///< Depth of groups in groups, and of alternate content.

    std::uint32_t slides = 65535;
    std::uint32_t shapes = 100'000;       ///< Of one slide, notes page, master or layout.
    std::uint32_t links = 65535;          ///< Of the same.
    std::size_t textUnits = 3u << 18;     ///< Text of one shape or property, in UTF-16 units.
    std::uint64_t grownBytes = 4u << 20;  ///< What edits may add to a presentation (`BadFormat`).

    /// For files of users: what stands above.
    static Limits Default() { return {}; }

    /// For fuzzing, where every case must be quick.
    static Limits Small()
    {
        return {.directoryBytes = 1u << 20, .partBytes = 1u << 20, .packageXmlBytes = 8u << 20, .nesting = 32};
    }
};

}  // namespace tessarine::builtin
