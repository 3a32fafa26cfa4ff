#include "PatchedCompound.h"

#include <stdexcept>

#include "platform/String.h"
#include "support/LittleEndian.h"

namespace tessarine::test
{

PatchedCompound& PatchedCompound::Header(std::size_t field, std::uint32_t value)
{
    little::PutLong(bytes, field, value);
    return *this;
}

std::uint32_t PatchedCompound::Record(const std::string& name, std::size_t field) const
{
    return NumberAt(RecordAt(name) + field);
}

PatchedCompound& PatchedCompound::Record(const std::string& name, std::size_t field, std::uint32_t value)
{
    little::PutLong(bytes, RecordAt(name) + field, value);
    return *this;
}

std::uint32_t PatchedCompound::NumberOf(const std::string& name) const
{
    return static_cast<std::uint32_t>((RecordAt(name) - PositionOf(Header(firstDirectorySector))) / 128);
}

PatchedCompound& PatchedCompound::Next(std::uint32_t sector, std::uint32_t value)
{
    const std::size_t perSector = SectorSize() / 4;
    const std::uint32_t table = Header(firstFatSector + 4 * (sector / perSector));
    little::PutLong(bytes, PositionOf(table) + 4 * (sector % perSector), value);
    return *this;
}

PatchedCompound& PatchedCompound::MiniNext(std::uint32_t sector, std::uint32_t value)
{
    little::PutLong(bytes, PositionOf(Header(firstMiniFatSector)) + 4 * std::size_t{sector}, value);
    return *this;
}

std::size_t PatchedCompound::PositionOf(std::uint32_t sector) const
{
    return (std::size_t{sector} + 1) * SectorSize();
}

std::uint32_t PatchedCompound::NumberAt(std::size_t position) const
{
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes.at(position + i));
    return number;
}

std::size_t PatchedCompound::SectorSize() const
{
    return std::size_t{1} << (NumberAt(30) & 0xFFFF);
}

/// The builder's directory lies in one piece.
std::size_t PatchedCompound::RecordAt(const std::string& name) const
{
    std::string field = little::Wide(FromUtf8(name));
    field.resize(64);
    const std::size_t start = PositionOf(Header(firstDirectorySector));
    for (std::size_t at = start; at + 128 <= bytes.size(); at += 128)
        if (bytes.compare(at, field.size(), field) == 0)
            return at;
    throw std::runtime_error("No record of that name.");
}

}  // namespace tessarine::test
