#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessarine::builtin
{

/// Inflates raw deflate data (RFC 1951) into `size` bytes at `target`. False when the data is damaged or has another
/// size; then the target holds anything. This and Deflate raise `std::bad_alloc` when there is no memory for the
/// library's own state.
bool Inflate(std::string_view packed, char* target, std::size_t size);

/// The data as raw deflate, at the level that office programs use.
std::string Deflate(std::string_view data);

/// The checksum that zip files keep of each entry, of its unpacked bytes (CRC-32, APPNOTE 4.4.7).
std::uint32_t Crc32(std::string_view data);

}  // namespace tessarine::builtin
