#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tessarine::test
{

/// A class id as it stands in a file.
using ClassId = std::array<unsigned char, 16>;

/// What the directory of a compound file says of a storage or stream beside its name.
struct CompoundMarks {
    ClassId classId{};
    std::uint32_t state = 0;
    std::uint64_t created = 0;  ///< 100-nanosecond steps since 1601, as in the file.
    std::uint64_t modified = 0;

    bool operator==(const CompoundMarks&) const = default;
};

/// Writes compound files [MS-CFB] byte by byte, with no library. The same input gives the same bytes on every machine.
class CompoundBuilder
{
public:
    /// A stream, or the new bytes of one. A name with "/" lies in storages, which are made.
    CompoundBuilder& Stream(const std::string& path, std::string bytes);
    CompoundBuilder& Storage(const std::string& path);
    CompoundBuilder& Without(const std::string& path);                     ///< Of a stream; it may be missing.
    CompoundBuilder& Marks(const std::string& path, CompoundMarks marks);  ///< "" is the root.

    CompoundBuilder& LargeSectors();  ///< Version 4, sectors of 4096 bytes.
    CompoundBuilder& Scattered();     ///< The sectors of each chain from back to front.
    /// Free sectors, filled with `junk`, in front of all others.
    CompoundBuilder& FreeSectors(std::size_t count, char junk);

    std::string Bytes() const;

private:
    struct Entry {
        bool stream = false;
        std::string bytes;
        CompoundMarks marks;
    };

    friend class CompoundLayout;

    std::map<std::string, Entry> entries_{{"", {}}};  ///< By path; storages too.
    bool largeSectors_ = false;
    bool scattered_ = false;
    std::size_t freeSectors_ = 0;
    char junk_ = 0;
};

}  // namespace tessarine::test
