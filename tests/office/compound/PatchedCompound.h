#pragma once

#include <cstdint>
#include <string>

namespace tessarine::test
{

/// A compound file of the builder with single numbers of it changed. Offsets are those of [MS-CFB]: in the header, and
/// in the records of the directory. All numbers have 32 bits.
class PatchedCompound
{
public:
    explicit PatchedCompound(std::string file) : bytes(std::move(file)) {}

    std::string bytes;

    std::uint32_t Header(std::size_t field) const { return NumberAt(field); }
    PatchedCompound& Header(std::size_t field, std::uint32_t value);

    /// Of the entry with a name, whatever storage it lies in. Raises std::runtime_error without one.
    std::uint32_t Record(const std::string& name, std::size_t field) const;
    PatchedCompound& Record(const std::string& name, std::size_t field, std::uint32_t value);
    std::uint32_t NumberOf(const std::string& name) const;  ///< Of its record.

    /// What follows a sector, or one of the mini stream.
    PatchedCompound& Next(std::uint32_t sector, std::uint32_t value);
    PatchedCompound& MiniNext(std::uint32_t sector, std::uint32_t value);

    std::size_t PositionOf(std::uint32_t sector) const;  ///< In the file.

private:
    std::uint32_t NumberAt(std::size_t position) const;
    std::size_t SectorSize() const;
    std::size_t RecordAt(const std::string& name) const;
};

// Fields of the header.
constexpr std::size_t firstDirectorySector = 48, firstMiniFatSector = 60, firstDifatSector = 68, firstFatSector = 76;
// Fields of a record.
constexpr std::size_t kindAndColor = 66, leftSibling = 68, rightSibling = 72, firstChild = 76, firstSector = 116,
                      sizeLow = 120, sizeHigh = 124;

}  // namespace tessarine::test
