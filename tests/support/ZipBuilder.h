#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessarine::test
{

/// Date and time of a zip entry in the form of the file system of old: two seconds' resolution, local time.
struct DosDateTime {
    std::uint16_t date = 0x0021;  ///< 1980-01-01, what office programs write.
    std::uint16_t time = 0;

    bool operator==(const DosDateTime&) const = default;
};

DosDateTime MakeDosDateTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

/// One entry to write: its content unpacked, and everything about its headers that a test may want otherwise.
struct ZipEntry {
    std::string name{};   ///< As it will stand in both headers, UTF-8.
    std::string bytes{};  ///< Unpacked content.
    bool stored = false;
    bool dataDescriptor = false;  ///< Sizes and CRC follow the data, as a streaming producer writes them.
    bool zip64 = false;           ///< Sizes stand in a zip64 extra field, needed or not.
    DosDateTime modified{};
    std::uint32_t externalAttributes = 0;
    std::string extraField{};  ///< Whole fields (id, size, data), added to both headers.
    std::string comment{};
};

/// Writes zip packages byte by byte, the strange ones included. The same input gives the same bytes on every machine.
class ZipBuilder
{
public:
    std::vector<ZipEntry> entries;  ///< In the order to write. Equal names are allowed and written.
    std::string prefix;             ///< Bytes in front of the first entry; offsets count from the file's start.
    std::string comment;            ///< The archive's comment.
    bool zip64End = false;          ///< Adds the zip64 end record and its locator.

    std::string Bytes() const;
};

/// A whole extra field: `id`, the size of `data`, `data`.
std::string ExtraField(std::uint16_t id, std::string_view data);

}  // namespace tessarine::test
