#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessarine::builtin
{

/// The sectors of a new compound file, or of its mini stream, given out from front to back: each chain lies in one
/// piece.
class SectorLayout
{
public:
    explicit SectorLayout(unsigned sectorShift) : sectorShift_(sectorShift) {}

    /// A chain for so many bytes. Gives its first sector, the end mark when it has none. Raises `BadFormat` beyond 2
    /// GiB.
    std::uint32_t Add(std::uint64_t bytes);

    /// Sectors for the table of all sectors, its own among them, and for the list of those that doesn't fit into the
    /// header ([MS-CFB] 2.3 and 2.5). Nothing can be added afterwards.
    void AddTables();

    std::uint32_t Count() const { return static_cast<std::uint32_t>(next_.size()); }  ///< Sectors so far.
    std::uint32_t TableSectors() const { return tableSectors_; }
    std::uint32_t ListSectors() const { return listSectors_; }
    std::uint32_t FirstListSector() const;  ///< The end mark without a list.
    std::string HeaderList() const;         ///< What the header has of the list.

    /// Which sector follows each one, filled up to whole sectors of `sectorShift`.
    std::string Table(unsigned sectorShift) const;
    std::string List() const;  ///< The list's sectors.

private:
    void RequireRoom(std::uint64_t sectors) const;
    std::uint32_t TableSector(std::uint64_t index) const;

    unsigned sectorShift_;
    std::vector<std::uint32_t> next_;
    std::uint32_t firstTableSector_ = 0;
    std::uint32_t tableSectors_ = 0;
    std::uint32_t listSectors_ = 0;  // right after those of the table
};

}  // namespace tessarine::builtin
