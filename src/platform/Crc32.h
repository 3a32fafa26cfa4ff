#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace tessarine
{

/// CRC-32 as in zip, gzip and PNG (ISO 3309): reflected polynomial 0xEDB88320, all bits set before and inverted behind.
/// Of the nine characters "123456789" it is 0xCBF43926, of nothing 0.
std::uint32_t Crc32(std::span<const std::byte> bytes);

}  // namespace tessarine
