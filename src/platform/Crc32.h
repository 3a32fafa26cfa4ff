#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace tessarine
{

/// CRC-32 as in zip, gzip and PNG (ISO 3309): reflected polynomial 0xEDB88320, all bits set before the first
/// byte and inverted after the last. The nine characters "123456789" have 0xCBF43926, no bytes 0.
///
/// For content that comes in pieces, `before` is the checksum of all pieces so far.
std::uint32_t Crc32(std::span<const std::byte> bytes, std::uint32_t before = 0);

}  // namespace tessarine
