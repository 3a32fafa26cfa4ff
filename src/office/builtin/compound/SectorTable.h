#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessarine::builtin
{

/// The sectors of one stream or table, in order: runs of sectors that lie one after the other.
class SectorChain
{
public:
    struct Run {
        std::uint32_t sector = 0;  ///< The first.
        std::uint32_t count = 0;
    };

    void Append(std::uint32_t sector);
    std::uint32_t Count() const { return count_; }  ///< All sectors.

    /// The sector at a position, which must be below Count(), with all that lie next to it from there on.
    Run At(std::uint32_t position) const;

private:
    struct Start {
        std::uint32_t position;  // of the run's first sector in the chain
        std::uint32_t sector;
    };

    std::vector<Start> runs_;
    std::uint32_t count_ = 0;
};

/// Which sector follows each one ([MS-CFB] 2.3 and 2.4), and which ones were taken. No sector is given out twice:
/// chains that meet or go in circles end there, and all chains together are no longer than the table.
class SectorTable
{
public:
    SectorTable() = default;  ///< Of no sectors.
    explicit SectorTable(std::vector<std::uint32_t> next);

    struct Taken {
        SectorChain chain;
        bool isWhole = false;  ///< The chain has its end mark there, or `most` sectors.
    };

    /// The chain that begins at a sector, but no more than `most` of it. It is shorter where a number in it leads
    /// outside of the table or to a sector that is taken.
    Taken Take(std::uint32_t first, std::uint64_t most);

    /// Keeps one sector, wherever it lies, from being part of a chain.
    void Keep(std::uint32_t sector);

private:
    std::vector<std::uint32_t> next_;
    std::vector<bool> isTaken_;
};

}  // namespace tessarine::builtin
