#include "platform/Crc32.h"

#include <array>

namespace tessarine
{

namespace
{

constexpr std::size_t stride = 8;
using Tables = std::array<std::array<std::uint32_t, 256>, stride>;

/// Table 0 takes one byte on. Table n takes on a byte that n further bytes follow, so that eight are done in one step.
constexpr Tables MakeTables()
{
    Tables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t rest = byte;
        for (int bit = 0; bit < 8; ++bit)
            // The polynomial of zip files, its bits in reverse order.
            rest = rest >> 1 ^ (rest & 1 ? 0xEDB88320u : 0u);
        tables[0][byte] = rest;
    }
    for (std::size_t table = 1; table < stride; ++table)
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t before = tables[table - 1][byte];
            tables[table][byte] = before >> 8 ^ tables[0][before & 0xFF];
        }
    return tables;
}

constexpr Tables tables = MakeTables();

}  // namespace

std::uint32_t Crc32(std::span<const std::byte> bytes, std::uint32_t before)
{
    // With nothing before, all bits are set: zero bytes at the beginning would leave a 0 as it is.
    std::uint32_t rest = ~before;
    for (; bytes.size() >= stride; bytes = bytes.subspan(stride)) {
        std::uint32_t next = 0;
        // The 32 bits so far concern the first four bytes alone; the last four stand for themselves.
        for (std::size_t at = 0; at < stride; ++at) {
            const std::uint32_t mask = at < 4 ? rest >> 8 * at & 0xFF : 0;
            next ^= tables[stride - 1 - at][std::to_integer<std::uint32_t>(bytes[at]) ^ mask];
        }
        rest = next;
    }
    for (const std::byte byte : bytes)
        rest = rest >> 8 ^ tables[0][(rest ^ std::to_integer<std::uint32_t>(byte)) & 0xFF];
    return ~rest;
}

}  // namespace tessarine
