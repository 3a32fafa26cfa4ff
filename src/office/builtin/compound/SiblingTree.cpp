#include "office/builtin/compound/SiblingTree.h"

#include <algorithm>
#include <bit>
#include <span>

#include "office/builtin/compound/CompoundFormat.h"
#include "platform/CaseFolding.h"
#include "platform/LittleEndian.h"

namespace tessarine::builtin
{

namespace
{

using namespace compound;
using littleendian::Put;

/// Links the sorted siblings below their middle one. Only the last level of such a tree can have gaps; with that level
/// red and all others black, every way down has as many black entries as the others.
std::uint32_t Link(std::span<const Sibling> siblings, unsigned blackLevels, std::string& directory)
{
    if (siblings.empty())
        return noRecord;
    const std::size_t middle = siblings.size() / 2;
    const std::uint32_t number = siblings[middle].second;
    const std::size_t record = number * recordSize;
    const unsigned below = blackLevels - (blackLevels > 0);
    const std::uint32_t left = Link(siblings.first(middle), below, directory);
    const std::uint32_t right = Link(siblings.subspan(middle + 1), below, directory);
    Put<std::uint32_t>(directory, record + record::left, left);
    Put<std::uint32_t>(directory, record + record::right, right);
    Put<std::uint8_t>(directory, record + record::color, blackLevels > 0 ? black : red);
    return number;
}

}  // namespace

std::uint32_t LinkSiblings(std::vector<Sibling> siblings, std::string& directory)
{
    for (Sibling& sibling : siblings)
        sibling.first = ToUpper(sibling.first);
    std::ranges::sort(siblings, [](const Sibling& a, const Sibling& b) {
        return std::pair(a.first.size(), a.first) < std::pair(b.first.size(), b.first);
    });
    // The levels that are full, as far as halving at the middle fills them.
    const auto fullLevels = static_cast<unsigned>(std::bit_width(siblings.size() + 1) - 1);
    return Link(siblings, fullLevels, directory);
}

}  // namespace tessarine::builtin
