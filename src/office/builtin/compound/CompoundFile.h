#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "files/RandomAccessFile.h"
#include "office/builtin/compound/SectorTable.h"
#include "office/builtin/limits/Limits.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// What the directory of a compound file names ([MS-CFB] 2.6.1).
struct CompoundEntry {
    enum class Kind : std::uint8_t { Root, Storage, Stream };

    String name;
    Kind kind = Kind::Stream;
    std::size_t parent = 0;               ///< Its storage's position in Entries(); the root's is its own.
    std::uint64_t size = 0;               ///< Of a stream, in bytes.
    std::array<std::byte, 16> classId{};  ///< Of a storage or the root, as in the file.
    std::uint32_t number = 0;             ///< Of its record in the directory.
};

/// A compound file ([MS-CFB]), from wherever its bytes lie: which storages and streams it has, and any part of a
/// stream. Streams stay in the file until they are read.
///
/// Nothing that the file says is believed: time and memory are in proportion to its size, whatever chains and trees it
/// describes. Counts in the header, tables longer than the file and sizes' unused halves are ignored, because real
/// files have them wrong; the numbers in the tables tell the same.
class CompoundFile
{
public:
    static constexpr std::size_t root = 0;  ///< Its position in Entries().

    /// Reads the tables and the directory. Borrows `bytes`. Raises `FileCorrupt` when these can't be followed, or are
    /// beyond the limits. A stream without all of its sectors fails only when it is read.
    explicit CompoundFile(const RandomAccessBytes& bytes, const Limits& limits = Limits::Default());

    /// Root, storages and streams, in the order of their records. What no storage names is not among them.
    const std::vector<CompoundEntry>& Entries() const { return entries_; }

    /// The entry of a name in a storage or the root, whatever its case ([MS-CFB] 2.6.4). Nothing without one.
    std::optional<std::size_t> Find(std::size_t storage, StringView name) const;

    /// Fills the whole buffer from an offset in a stream. Raises `FileCorrupt` beyond its end, and where it lacks
    /// sectors.
    void Read(std::size_t stream, std::uint64_t offset, std::span<std::byte> buffer) const;

    /// All bytes of a stream. Raises as Read does, before any memory is taken.
    std::string Bytes(std::size_t stream) const;

    /// Raises `FileCorrupt`, with the stream's name, when it lacks sectors: they end too early, or are another
    /// stream's.
    void RequireSectors(std::size_t stream) const;

    // For writing it anew.

    std::string_view Header() const { return header_; }    ///< The first 512 bytes.
    std::string_view Record(std::size_t entry) const;      ///< Its 128 bytes in the directory.
    unsigned SectorShift() const { return sectorShift_; }  ///< 9 or 12: the binary logarithm of a sector's size.

    const RandomAccessBytes& Source() const { return bytes_; }

    /// Where the bytes of a stream lie in the source, from an offset on to where it goes on elsewhere; in bytes.
    /// Nothing for one in the mini stream, whose pieces are small. Only for offsets within a stream that has its
    /// sectors.
    struct Piece {
        std::uint64_t position;
        std::uint64_t length;
    };
    std::optional<Piece> PieceAt(std::size_t stream, std::uint64_t offset) const;

private:
    /// Where a stream lies.
    struct Place {
        SectorChain chain;
        bool isMini = false;   // the sectors are those of the mini stream
        bool isWhole = false;  // it has all that its size needs
    };

    void ReadHeader();
    SectorTable ReadFat() const;
    void ReadDirectory(SectorTable& fat, const Limits& limits);
    void ReadTree();
    void AddEntry(std::uint32_t number, std::size_t parent);
    void FindStreams(SectorTable& fat);
    SectorTable ReadMiniFat(SectorTable& fat) const;

    std::uint32_t HeaderNumber(std::size_t field) const;
    std::string_view RecordAt(std::uint32_t number) const;
    std::uint64_t SizeIn(std::string_view record) const;
    std::uint64_t Position(std::uint32_t sector) const;  // in the file
    std::string ReadTable(const SectorChain& chain) const;
    std::string ReadPadded(std::uint32_t sector, std::uint64_t count) const;
    void ReadSectors(const SectorChain& chain, std::uint64_t offset, std::span<std::byte> buffer) const;
    void ReadMiniSectors(const SectorChain& chain, std::uint64_t offset, std::span<std::byte> buffer) const;

    const RandomAccessBytes& bytes_;
    std::string header_;
    unsigned sectorShift_ = 0;
    std::uint32_t sectors_ = 0;  // of the file, after the header's; the last may be cut
    std::string directory_;      // all records
    std::vector<CompoundEntry> entries_;
    std::vector<Place> places_;  // of each entry; of one that is no stream nothing
    SectorChain miniStream_;
};

}  // namespace tessarine::builtin
