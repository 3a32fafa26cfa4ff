#pragma once

#include <cstddef>
#include <cstdint>

namespace tessarine::builtin
{

/// What the engine is willing to hold for one presentation. It is far more than real decks need: a hostile file fails
/// here (`FileCorrupt`) before it has taken the machine's memory. Sizes are in bytes.
struct Limits {
    std::uint64_t directoryBytes = 64u << 20;  ///< Central directory of the zip file.
    std::uint64_t partBytes = 64u << 20;       ///< One XML part, inflated.
    std::uint64_t documentBytes = 512u << 20;  ///< Node memory of one parsed part.
    std::uint32_t nesting = 128;               ///< Depth of groups in groups, and of alternate content.
    std::uint64_t packageXmlBytes = 1u << 30;  ///< All parts that one presentation has had inflated.

    /// For files of users: what stands above.
    static Limits Default() { return {}; }

    /// For fuzzing, where every case must be quick.
    static Limits Small()
    {
        return {.directoryBytes = 1u << 20,
                .partBytes = 1u << 20,
                .documentBytes = 32u << 20,
                .nesting = 32,
                .packageXmlBytes = 8u << 20};
    }
};

}  // namespace tessarine::builtin
