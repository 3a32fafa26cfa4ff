#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

/// Unsigned integers as files of Microsoft's formats hold them, the lowest byte first.
namespace tessarine::littleendian
{

/// An unsigned little-endian integer at an offset; the caller has checked the length.
template <class Integer>
Integer Get(std::string_view bytes, std::size_t offset)
{
    if constexpr (std::endian::native == std::endian::little) {
        Integer value;  // one instruction, where the loop below takes many
        std::memcpy(&value, bytes.data() + offset, sizeof value);
        return value;
    }
    std::uint64_t value = 0;
    for (std::size_t i = sizeof(Integer); i-- > 0;)
        value = value << 8 | static_cast<std::uint8_t>(bytes[offset + i]);
    return static_cast<Integer>(value);
}

/// Overwrites an integer at an offset, which the bytes must reach.
template <class Integer>
void Put(std::string& bytes, std::size_t offset, Integer value)
{
    auto rest = static_cast<std::uint64_t>(value);
    for (std::size_t i = 0; i < sizeof(Integer); ++i, rest >>= 8)
        bytes[offset + i] = static_cast<char>(rest & 0xFF);
}

/// Adds an integer at the end.
template <class Integer>
void Append(std::string& bytes, Integer value)
{
    bytes.append(sizeof(Integer), '\0');
    Put<Integer>(bytes, bytes.size() - sizeof(Integer), value);
}

}  // namespace tessarine::littleendian
