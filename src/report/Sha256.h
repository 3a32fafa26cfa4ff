#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace tessarine
{

/// The SHA-256 digest of some bytes (FIPS 180-4).
std::array<std::uint8_t, 32> Sha256(std::string_view bytes);

/// Bytes as base64 with padding (RFC 4648, 4).
std::string Base64(const std::array<std::uint8_t, 32>& bytes);

}  // namespace tessarine
