#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/LittleEndian.h"

/// Signatures and field offsets for the records of a zip file (PKWARE APPNOTE 4.3). All sizes and
/// offsets are in bytes from the start of a record.
namespace tessarine::builtin::zip
{

// The first four bytes of each kind of record: "PK" and two bytes of its own.
constexpr std::uint32_t localSignature = 0x04034b50;
constexpr std::uint32_t centralSignature = 0x02014b50;
constexpr std::uint32_t endSignature = 0x06054b50;
constexpr std::uint32_t end64Signature = 0x06064b50;
constexpr std::uint32_t end64LocatorSignature = 0x07064b50;

// The fixed part of each record; names, extra fields and comments follow it.
constexpr std::size_t localSize = 30;
constexpr std::size_t centralSize = 46;
constexpr std::size_t endSize = 22;
constexpr std::size_t end64Size = 56;
constexpr std::size_t end64LocatorSize = 20;

constexpr std::uint16_t flagDataDescriptor = 0x0008;  ///< The sizes follow the packed data.
constexpr std::uint16_t extraZip64 = 0x0001;          ///< The id of the extra field with 64-bit values.
constexpr std::uint32_t in64 = 0xFFFFFFFF;            ///< "The value stands in the zip64 field."
constexpr std::uint16_t count64 = 0xFFFF;             ///< The same for a count of entries.

using littleendian::Append;
using littleendian::Get;
using littleendian::Put;

/// Field offsets in a local header. Its sizes may be 0 when a data descriptor follows the packed data.
namespace local
{
constexpr std::size_t flags = 6, crc = 14, packedSize = 18, size = 22, nameLength = 26, extraLength = 28;
}

/// Field offsets in a central record, which always has the sizes.
namespace central
{
constexpr std::size_t flags = 8, method = 10, crc = 16, packedSize = 20, size = 24, nameLength = 28, extraLength = 30,
                      commentLength = 32, disk = 34, localHeader = 42;
}

/// Field offsets in the end record and its zip64 form.
namespace end
{
constexpr std::size_t disk = 4, count = 10, directorySize = 12, directoryStart = 16, commentLength = 20;
}
/// The zip64 end record (APPNOTE 4.3.14), for what doesn't fit into the fields of the other one.
namespace end64
{
constexpr std::size_t count = 32, directorySize = 40, directoryStart = 48;
}

}  // namespace tessarine::builtin::zip
