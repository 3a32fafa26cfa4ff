#include "report/Sha256.h"

#include <bit>
#include <cstddef>
#include <vector>

namespace tessarine
{

namespace
{

using Words = std::array<std::uint32_t, 8>;

/// The first 32 bits of the fractional parts of the cube roots of the first 64 primes (FIPS 180-4, 4.2.2).
constexpr std::array<std::uint32_t, 64> roundConstants{
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2,
};

/// Those of the square roots of the first 8 primes (FIPS 180-4, 5.3.3).
constexpr Words startOfHash{
    0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a, 0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19,
};

constexpr std::size_t blockSize = 64;  // bytes

/// The message with a one bit, zeros and its length in bits, so that blocks divide it (FIPS 180-4, 5.1.1).
std::vector<std::uint8_t> Padded(std::string_view bytes)
{
    std::vector<std::uint8_t> padded(bytes.begin(), bytes.end());
    padded.push_back(0x80);
    while (padded.size() % blockSize != blockSize - 8)
        padded.push_back(0);
    const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
    for (int shift = 56; shift >= 0; shift -= 8)
        padded.push_back(static_cast<std::uint8_t>(bits >> shift));
    return padded;
}

std::array<std::uint32_t, 64> ScheduleOf(const std::uint8_t* block)
{
    std::array<std::uint32_t, 64> words{};
    for (std::size_t t = 0; t < blockSize; ++t)
        words[t / 4] = words[t / 4] << 8 | block[t];
    for (std::size_t t = 16; t < words.size(); ++t) {
        const std::uint32_t early = words[t - 15];
        const std::uint32_t late = words[t - 2];
        words[t] = words[t - 16] + (std::rotr(early, 7) ^ std::rotr(early, 18) ^ early >> 3) + words[t - 7] +
                   (std::rotr(late, 17) ^ std::rotr(late, 19) ^ late >> 10);
    }
    return words;
}

/// One block (FIPS 180-4, 6.2.2), with the standard's letters.
void AddBlock(Words& hash, const std::uint8_t* block)
{
    const auto words = ScheduleOf(block);
    auto [a, b, c, d, e, f, g, h] = hash;
    for (std::size_t t = 0; t < words.size(); ++t) {
        const std::uint32_t first = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) + ((e & f) ^ (~e & g)) +
                                    roundConstants[t] + words[t];
        const std::uint32_t second =
            (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + first;
        d = c;
        c = b;
        b = a;
        a = first + second;
    }
    const Words worked{a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < hash.size(); ++i)
        hash[i] += worked[i];
}

}  // namespace

std::array<std::uint8_t, 32> Sha256(std::string_view bytes)
{
    Words hash = startOfHash;
    const auto padded = Padded(bytes);
    for (std::size_t at = 0; at < padded.size(); at += blockSize)
        AddBlock(hash, padded.data() + at);

    std::array<std::uint8_t, 32> digest{};
    for (std::size_t i = 0; i < digest.size(); ++i)
        digest[i] = static_cast<std::uint8_t>(hash[i / 4] >> (24 - 8 * (i % 4)));
    return digest;
}

std::string Base64(const std::array<std::uint8_t, 32>& bytes)
{
    constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        // A last group that is short of bytes is filled up with zeros.
        std::uint32_t group = 0;
        for (std::size_t i = at; i < at + 3; ++i)
            group = group << 8 | (i < bytes.size() ? bytes[i] : 0u);
        for (int shift = 18; shift >= 0; shift -= 6)
            text += letters[group >> shift & 63];
    }
    // 32 bytes end in a group of two.
    text.back() = '=';
    return text;
}

}  // namespace tessarine
