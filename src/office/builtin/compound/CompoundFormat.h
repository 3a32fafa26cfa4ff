#pragma once

#include <cstddef>
#include <cstdint>

/// Marks, sizes and field offsets of compound files ([MS-CFB] 2.2 to 2.6). Sizes and offsets are in bytes from the
/// start of the header or of a record; all numbers are little-endian.
namespace tessarine::builtin::compound
{

constexpr std::size_t headerSize = 512;     ///< The first sector holds nothing else, however large it is.
constexpr std::size_t recordSize = 128;     ///< Of an entry in the directory.
constexpr std::size_t numberSize = 4;       ///< Of a sector's number in a table.
constexpr unsigned miniSectorShift = 6;     ///< Sectors of the mini stream have 64 bytes.
constexpr std::uint32_t miniCutoff = 4096;  ///< Streams of so many bytes lie in sectors of their own.
constexpr std::uint16_t version4 = 4;       ///< The major version with sectors of 4096 bytes and sizes of 64 bits.

// In place of a sector's number.
constexpr std::uint32_t highestSector = 0xFFFFFFFA;
constexpr std::uint32_t difatSector = 0xFFFFFFFC;  ///< In the FAT: the sector is one of the DIFAT.
constexpr std::uint32_t fatSector = 0xFFFFFFFD;    ///< In the FAT: the sector is one of the FAT.
constexpr std::uint32_t endOfChain = 0xFFFFFFFE;
constexpr std::uint32_t freeSector = 0xFFFFFFFF;

constexpr std::uint32_t noRecord = 0xFFFFFFFF;  ///< In place of a record's number.

/// How many sectors so many bytes take; `shift` is the binary logarithm of a sector's size.
constexpr std::uint64_t SectorsOf(std::uint64_t bytes, unsigned shift)
{
    return (bytes >> shift) + ((bytes & ((std::uint64_t{1} << shift) - 1)) != 0);
}

namespace header
{
constexpr std::size_t majorVersion = 26;  // 16 bits, as the shift
constexpr std::size_t sectorShift = 30;
constexpr std::size_t miniSectorShift = 32;
constexpr std::size_t directorySectors = 40;  // of version 4 alone
constexpr std::size_t fatSectors = 44;
constexpr std::size_t firstDirectorySector = 48;
constexpr std::size_t miniCutoff = 56;
constexpr std::size_t firstMiniFatSector = 60;
constexpr std::size_t miniFatSectors = 64;
constexpr std::size_t firstDifatSector = 68;
constexpr std::size_t difatSectors = 72;
constexpr std::size_t difat = 76;  // the numbers of the first FAT sectors; sectors of the DIFAT have the others
constexpr std::size_t difatLength = 109;
}  // namespace header

namespace record
{
constexpr std::size_t nameUnits = 32;   // the name lies at the start
constexpr std::size_t nameLength = 64;  // 16 bits: in bytes, with the NUL
constexpr std::size_t type = 66;        // 8 bits
constexpr std::size_t color = 67;       // 8 bits
constexpr std::size_t left = 68;
constexpr std::size_t right = 72;
constexpr std::size_t child = 76;
constexpr std::size_t classId = 80;
constexpr std::size_t start = 116;  // the first sector
constexpr std::size_t size = 120;   // 64 bits; below version 4 the high half means nothing
}  // namespace record

namespace type
{
constexpr std::uint8_t unused = 0;
constexpr std::uint8_t storage = 1;
constexpr std::uint8_t stream = 2;
constexpr std::uint8_t root = 5;
}  // namespace type

constexpr std::uint8_t red = 0;
constexpr std::uint8_t black = 1;

}  // namespace tessarine::builtin::compound
