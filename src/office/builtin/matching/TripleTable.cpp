#include "office/builtin/matching/TripleTable.h"

#include <algorithm>
#include <bit>

namespace tessarine::builtin
{

namespace
{

constexpr std::size_t tripleLength = 3;

std::uint32_t HashOfTriple(const char16_t* units)
{
    // Odd factors spread the bits of each unit; the table goes by the lower ones, so the upper are mixed in.
    const std::uint32_t mixed = units[0] * 0x9E3779B1u ^ units[1] * 0x85EBCA77u ^ units[2] * 0xC2B2AE3Du;
    return mixed ^ mixed >> 15;
}

}  // namespace

std::vector<std::uint32_t> HashesOfTriples(StringView text)
{
    std::vector<std::uint32_t> hashes;
    for (std::size_t i = 0; i + tripleLength <= text.size(); ++i)
        hashes.push_back(HashOfTriple(text.data() + i));
    return hashes;
}

TripleTable::TripleTable(std::size_t textUnits)
{
    // Sparse enough that nearly every text that is not there has a missing triple.
    constexpr std::size_t bitsForEach = 16;
    constexpr std::size_t fewest = 1u << 10;
    constexpr std::size_t most = 1u << 24;
    bits_.resize(std::bit_ceil(std::clamp(textUnits * bitsForEach, fewest, most)));
}

void TripleTable::Add(StringView text)
{
    for (std::size_t i = 0; i + tripleLength <= text.size(); ++i)
        // Their number is a power of two, which makes this the remainder.
        bits_[HashOfTriple(text.data() + i) & (bits_.size() - 1)] = true;
}

bool TripleTable::HoldsAll(const std::vector<std::uint32_t>& hashes) const
{
    return std::ranges::all_of(hashes, [&](std::uint32_t hash) { return bits_[hash & (bits_.size() - 1)]; });
}

}  // namespace tessarine::builtin
