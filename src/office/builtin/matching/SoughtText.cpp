#include "office/builtin/matching/SoughtText.h"

#include <algorithm>
#include <bit>

#include "platform/CaseFolding.h"

namespace tessarine::builtin
{

namespace
{

std::uint64_t lastSerial = 0;

constexpr std::size_t tripleLength = 3;

std::uint32_t HashOfTriple(const char16_t* units)
{
    const std::uint32_t mixed = units[0] * 0x9E3779B1u ^ units[1] * 0x85EBCA77u ^ units[2] * 0xC2B2AE3Du;
    return mixed ^ mixed >> 15;
}

}  // namespace

SoughtText::SoughtText(const String& findWhat)
    : serial(++lastSerial),
      text(findWhat),
      folded(FoldCase(StringView(findWhat))),
      hasBreaks(std::ranges::any_of(findWhat, [](char16_t unit) { return unit < 0x20; }))
{
    for (std::size_t i = 0; i + tripleLength <= folded.size(); ++i)
        triples.push_back(HashOfTriple(folded.data() + i));
}

/// Sparse enough that nearly every text that is not there has a missing triple.
TripleTable::TripleTable(std::size_t textLength)
{
    constexpr std::size_t placesForEach = 16;
    constexpr std::size_t fewest = 1u << 10;
    constexpr std::size_t most = 1u << 24;
    bits_.resize(std::bit_ceil(std::clamp(textLength * placesForEach, fewest, most)));
}

void TripleTable::Add(StringView folded)
{
    for (std::size_t i = 0; i + tripleLength <= folded.size(); ++i)
        bits_[HashOfTriple(folded.data() + i) & (bits_.size() - 1)] = true;
}

bool TripleTable::HoldsAll(const SoughtText& sought) const
{
    return std::ranges::all_of(sought.triples,
                               [&](std::uint32_t triple) { return bits_[triple & (bits_.size() - 1)]; });
}

}  // namespace tessarine::builtin
