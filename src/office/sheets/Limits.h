#pragma once

#include <cstddef>
#include <cstdint>

namespace tessarine::sheets
{

/// What the engine is willing to hold for one sheet. Far beyond what real lists need; a hostile file meets a failure
/// (`ApplicationDefined`) here instead of the machine's memory.
struct Limits {
    std::uint64_t fileBytes = 64u << 20;      ///< Of a file to be opened.
    std::size_t cells = 65536u * 256u;        ///< As many as a sheet of a binary workbook has; texts, too.
    std::size_t textUnits = 32u << 20;        ///< All texts of a sheet together, UTF-16 units.
    std::size_t cellUnits = 64u << 20;        ///< The texts of all cells, each counted as often as cells have it.
    std::size_t fieldUnits = 1u << 20;        ///< One field of separated text, UTF-16 units.
    std::uint64_t partBytes = 64u << 20;      ///< One part of an Office Open XML workbook, unpacked.
    std::uint64_t allPartBytes = 256u << 20;  ///< Those parts together that are read.
    std::size_t formats = 65536;              ///< Number formats and cell formats of a workbook, each.

    static Limits Default() { return {}; }

    /// For fuzzing, where every case must be quick.
    static Limits Small()
    {
        return {.fileBytes = 1u << 20,
                .cells = 1u << 16,
                .textUnits = 1u << 20,
                .cellUnits = 2u << 20,
                .partBytes = 1u << 20,
                .allPartBytes = 4u << 20,
                .formats = 1024};
    }
};

}  // namespace tessarine::sheets
