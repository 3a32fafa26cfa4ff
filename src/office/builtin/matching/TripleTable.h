#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/String.h"

namespace tessarine::builtin
{

/// Hashes of every three units in a row, from front to back; none for a text of fewer than three units.
std::vector<std::uint32_t> HashesOfTriples(StringView text);

/// Which three units in a row some texts have: a quick way to a no for what is asked again and again. Takes 16 bits for
/// each unit, between 128 bytes and 2 MiB in all.
class TripleTable
{
public:
    TripleTable() = default;                      ///< Not made: may only be asked for that.
    explicit TripleTable(std::size_t textUnits);  ///< For texts of so many units in all.

    bool IsMade() const { return !bits_.empty(); }
    std::size_t KeptBytes() const { return bits_.size() / 8; }  ///< Of memory.
    void Add(StringView text);  ///< Any number of texts; what would span two of them doesn't count.

    /// False only when none of the added texts has one of these triples; true for no hashes.
    bool HoldsAll(const std::vector<std::uint32_t>& hashes) const;

private:
    std::vector<bool> bits_;  // by hash; their number is a power of two
};

}  // namespace tessarine::builtin
