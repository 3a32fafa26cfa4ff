#include "office/builtin/compound/SectorLayout.h"

#include <algorithm>

#include "office/builtin/compound/CompoundFormat.h"
#include "platform/Failure.h"
#include "platform/LittleEndian.h"

namespace tessarine::builtin
{

using namespace compound;

std::uint32_t SectorLayout::Add(std::uint64_t bytes)
{
    const std::uint64_t count = SectorsOf(bytes, sectorShift_);
    if (count == 0)
        return endOfChain;
    RequireRoom(count);
    const std::uint32_t first = Count();
    for (std::uint64_t i = 1; i < count; ++i)
        next_.push_back(Count() + 1);
    next_.push_back(endOfChain);
    return first;
}

void SectorLayout::AddTables()
{
    const std::uint64_t perSector = (std::uint64_t{1} << sectorShift_) / numberSize;
    std::uint64_t tables = 0;
    std::uint64_t lists = 0;
    // Each sector of a table may need another one; the sum grows until it holds itself.
    for (std::uint64_t all = Count(); tables * perSector < all; all = Count() + tables + lists) {
        tables = (all + perSector - 1) / perSector;
        const std::uint64_t listed = tables - std::min<std::uint64_t>(tables, header::difatLength);
        lists = (listed + perSector - 2) / (perSector - 1);  // the last number of each leads to the next
    }
    RequireRoom(tables + lists);
    firstTableSector_ = Count();
    tableSectors_ = static_cast<std::uint32_t>(tables);
    listSectors_ = static_cast<std::uint32_t>(lists);
    next_.insert(next_.end(), tableSectors_, fatSector);
    next_.insert(next_.end(), listSectors_, difatSector);
}

std::uint32_t SectorLayout::FirstListSector() const
{
    return listSectors_ == 0 ? endOfChain : firstTableSector_ + tableSectors_;
}

std::string SectorLayout::HeaderList() const
{
    std::string list;
    for (std::uint32_t i = 0; i < header::difatLength; ++i)
        littleendian::Append<std::uint32_t>(list, TableSector(i));
    return list;
}

std::string SectorLayout::Table(unsigned sectorShift) const
{
    const std::uint64_t size = SectorsOf(next_.size() * numberSize, sectorShift) << sectorShift;
    std::string table(static_cast<std::size_t>(size), '\xFF');
    for (std::size_t i = 0; i < next_.size(); ++i)
        littleendian::Put<std::uint32_t>(table, i * numberSize, next_[i]);
    return table;
}

std::string SectorLayout::List() const
{
    const std::uint32_t perSector = (1u << sectorShift_) / numberSize;
    std::string list;
    std::uint64_t index = header::difatLength;
    for (std::uint32_t sector = 1; sector <= listSectors_; ++sector) {
        for (std::uint32_t i = 1; i < perSector; ++i)
            littleendian::Append<std::uint32_t>(list, TableSector(index++));
        littleendian::Append<std::uint32_t>(list, sector < listSectors_ ? FirstListSector() + sector : endOfChain);
    }
    return list;
}

void SectorLayout::RequireRoom(std::uint64_t sectors) const
{
    // The header's sector counts as well.
    constexpr std::uint64_t mostBytes = std::uint64_t{1} << 31;
    const std::uint64_t room = (mostBytes >> sectorShift_) - 1 - Count();
    if (sectors > room)
        throw Failure(FailureNumber::BadFormat, u"The presentation would grow beyond 2 GiB");
}

/// The sector that has a part of the table, the free mark for a part that there is not.
std::uint32_t SectorLayout::TableSector(std::uint64_t index) const
{
    return index < tableSectors_ ? firstTableSector_ + static_cast<std::uint32_t>(index) : freeSector;
}

}  // namespace tessarine::builtin
