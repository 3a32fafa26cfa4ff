#include "support/BinaryEncryption.h"

#include <array>
#include <bit>
#include <numeric>
#include <utility>

#include "support/BinaryRecords.h"

namespace tessarine::test::ppt
{

namespace
{

const std::string Salt = "salt of the deck";

std::string BigEndian(std::uint64_t value, int count)
{
    std::string bytes;
    for (int i = count - 1; i >= 0; --i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    return bytes;
}

/// One block of 64 bytes goes into the state of SHA-1.
void AddBlock(std::array<std::uint32_t, 5>& state, const std::string& message, std::size_t at)
{
    std::array<std::uint32_t, 80> words{};
    for (std::size_t i = 0; i < 16; ++i)
        for (std::size_t k = 0; k < 4; ++k)
            words[i] = words[i] << 8 | static_cast<unsigned char>(message[at + 4 * i + k]);
    for (std::size_t i = 16; i < 80; ++i)
        words[i] = std::rotl(words[i - 3] ^ words[i - 8] ^ words[i - 14] ^ words[i - 16], 1);
    auto [a, b, c, d, e] = state;
    for (std::size_t i = 0; i < 80; ++i) {
        const std::uint32_t mixed = i < 20   ? ((b & c) | (~b & d)) + 0x5A827999
                                    : i < 40 ? (b ^ c ^ d) + 0x6ED9EBA1
                                    : i < 60 ? ((b & c) | (b & d) | (c & d)) + 0x8F1BBCDC
                                             : (b ^ c ^ d) + 0xCA62C1D6;
        const std::uint32_t next = std::rotl(a, 5) + mixed + e + words[i];
        e = std::exchange(d, std::exchange(c, std::rotl(std::exchange(b, std::exchange(a, next)), 30)));
    }
    state[0] += a;
    state[1] += b;
    state[2] += c;
    state[3] += d;
    state[4] += e;
}

std::string Sha1(std::string message)
{
    std::array<std::uint32_t, 5> state{0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};
    const std::uint64_t bits = 8 * message.size();
    message += '\x80';
    while (message.size() % 64 != 56)
        message += '\0';
    message += BigEndian(bits, 8);
    for (std::size_t at = 0; at < message.size(); at += 64)
        AddBlock(state, message, at);
    std::string digest;
    for (const auto word : state)
        digest += BigEndian(word, 4);
    return digest;
}

std::string Rc4(const std::string& key, std::string bytes)
{
    std::array<unsigned char, 256> state{};
    std::iota(state.begin(), state.end(), static_cast<unsigned char>(0));
    for (std::size_t i = 0, j = 0; i < 256; ++i) {
        j = (j + state[i] + static_cast<unsigned char>(key[i % key.size()])) % 256;
        std::swap(state[i], state[j]);
    }
    std::size_t i = 0;
    std::size_t j = 0;
    for (auto& byte : bytes) {
        i = (i + 1) % 256;
        j = (j + state[i]) % 256;
        std::swap(state[i], state[j]);
        byte = static_cast<char>(byte ^ static_cast<char>(state[(state[i] + state[j]) % 256]));
    }
    return bytes;
}

}  // namespace

std::string CryptSession(StringView password, std::size_t keyBits)
{
    // CryptoAPI encryption, and property streams that are not encrypted.
    constexpr std::uint32_t Flags = 0x4 | 0x8;
    constexpr std::uint32_t Rc4Algorithm = 0x6801;
    constexpr std::uint32_t Sha1Algorithm = 0x8004;
    const std::string provider = Wide(u"Microsoft Enhanced Cryptographic Provider v1.0") + Short(0);
    const std::string header = Long(Flags) + Long(0) + Long(Rc4Algorithm) + Long(Sha1Algorithm) +
                               Long(static_cast<std::uint32_t>(keyBits)) + Long(1) + Long(0) + Long(0) + provider;
    const std::string verifier = "verifies the key";
    const std::string encrypted = Encrypt(password, 0, verifier + Sha1(verifier), keyBits);
    return Container(12052, Short(2) + Short(2) + Long(Flags) + Long(static_cast<std::uint32_t>(header.size())) +
                                header + Long(static_cast<std::uint32_t>(Salt.size())) + Salt +
                                encrypted.substr(0, 16) + Long(20) + encrypted.substr(16));
}

std::string Encrypt(StringView password, std::uint32_t persistId, const std::string& bytes, std::size_t keyBits)
{
    constexpr std::size_t ShortestKey = 40;
    constexpr std::size_t FullSize = 16;
    std::string key = Sha1(Sha1(Salt + Wide(password)) + Long(persistId)).substr(0, keyBits / 8);
    // The shortest key is filled up with zeros; those between are taken as they are.
    if (keyBits == ShortestKey)
        key.resize(FullSize);
    return Rc4(key, bytes);
}

}  // namespace tessarine::test::ppt
