#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessarine::builtin
{

/// Inflates raw deflate data whose size is known. False when the data is damaged or has another size.
bool Inflate(std::string_view packed, char* target, std::size_t size);

/// Raw deflate at the level that office programs use.
std::string Deflate(std::string_view data);

std::uint32_t Crc32(std::string_view data);

}  // namespace tessarine::builtin
