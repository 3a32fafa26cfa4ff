#include "office/builtin/compound/SectorTable.h"

#include <algorithm>
#include <utility>

#include "office/builtin/compound/CompoundFormat.h"

namespace tessarine::builtin
{

void SectorChain::Append(std::uint32_t sector)
{
    const bool isNext = !runs_.empty() && runs_.back().sector + (count_ - runs_.back().position) == sector;
    if (!isNext)
        runs_.push_back({count_, sector});
    ++count_;
}

SectorChain::Run SectorChain::At(std::uint32_t position) const
{
    const auto next = std::ranges::upper_bound(runs_, position, {}, &Start::position);
    const std::uint32_t end = next == runs_.end() ? count_ : next->position;
    const Start& run = *std::prev(next);
    return {run.sector + (position - run.position), end - position};
}

SectorTable::SectorTable(std::vector<std::uint32_t> next) : next_(std::move(next)), isTaken_(next_.size()) {}

SectorTable::Taken SectorTable::Take(std::uint32_t first, std::uint64_t most)
{
    Taken taken;
    std::uint32_t sector = first;
    for (; taken.chain.Count() < most; sector = next_[sector]) {
        if (sector >= next_.size() || isTaken_[sector])
            break;
        isTaken_[sector] = true;
        taken.chain.Append(sector);
    }
    taken.isWhole = taken.chain.Count() == most || sector == compound::endOfChain;
    return taken;
}

void SectorTable::Keep(std::uint32_t sector)
{
    if (sector < isTaken_.size())
        isTaken_[sector] = true;
}

}  // namespace tessarine::builtin
