#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/String.h"

/// RC4 CryptoAPI encryption of binary decks [MS-OFFCRYPTO], with keys of 40 to 128 bits.
namespace tessarine::test::ppt
{

/// The password that PowerPoint tries by itself: of presentations that only changing is protected of.
inline constexpr StringView SilentPassword = u"/01Hannes Ruescher/01";

/// Container of the header and the verifier; its salt is always the same.
std::string CryptSession(StringView password, std::size_t keyBits = 128);

/// The bytes of a persist object, encrypted with its own key.
std::string Encrypt(StringView password, std::uint32_t persistId, const std::string& bytes, std::size_t keyBits = 128);

}  // namespace tessarine::test::ppt
