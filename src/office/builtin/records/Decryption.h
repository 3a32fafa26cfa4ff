#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tessarine::builtin
{

class PersistObjects;

/// The document stream of an encrypted presentation in plain ([MS-OFFCRYPTO] 2.3.5, RC4 of the CryptoAPI). Nothing
/// where that takes a password of the user's.
///
/// A presentation that only needs a password to be changed is encrypted as well, with a password that PowerPoint knows:
/// it opens such a file without a question.
std::optional<std::string> DecryptedByPowerPoint(std::string_view stream, const PersistObjects& objects);

/// SHA-1 (RFC 3174) of some bytes, and RC4 of others with a key: what such files are protected by. Neither protects
/// anything today.
std::string Sha1(std::string_view bytes);
class Rc4
{
public:
    explicit Rc4(std::string_view key);
    std::string Apply(std::string_view bytes);  ///< Goes on where it has ended.

private:
    std::array<unsigned char, 256> state_{};
    unsigned char i_ = 0;
    unsigned char j_ = 0;
};

}  // namespace tessarine::builtin
