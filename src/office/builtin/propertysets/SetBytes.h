#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/LittleEndian.h"

/// Numbers of property sets, the lowest byte first, whose sizes the sets tell: they may lie, so that reading here never
/// goes beyond the end (platform/LittleEndian.h is for sizes and places that are known).
namespace tessarine::builtin
{

/// A number of `size` bytes; bytes beyond the end count as zero.
inline std::uint64_t NumberAt(std::string_view bytes, std::size_t at, std::size_t size)
{
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < size && at < bytes.size() && i < bytes.size() - at; ++i)
        number |= std::uint64_t{static_cast<unsigned char>(bytes[at + i])} << (8 * i);
    return number;
}

inline std::uint16_t ShortAt(std::string_view bytes, std::size_t at)
{
    return static_cast<std::uint16_t>(NumberAt(bytes, at, 2));
}

inline std::uint32_t LongAt(std::string_view bytes, std::size_t at)
{
    return static_cast<std::uint32_t>(NumberAt(bytes, at, 4));
}

inline std::uint64_t QuadAt(std::string_view bytes, std::size_t at)
{
    return NumberAt(bytes, at, 8);
}

/// What of the bytes lies from `at` on, `size` of them at most; none beyond the end.
inline std::string_view Slice(std::string_view bytes, std::size_t at, std::size_t size = std::string_view::npos)
{
    return at < bytes.size() ? bytes.substr(at, size) : std::string_view();
}

/// The lower `size` bytes of a number.
inline void AppendNumber(std::string& bytes, std::uint64_t number, std::size_t size)
{
    for (std::size_t i = 0; i < size; ++i, number >>= 8)
        bytes += static_cast<char>(number & 0xFF);
}

/// Puts the number in place of the four bytes at `at`, which are there.
inline void PutLong(std::string& bytes, std::size_t at, std::size_t number)
{
    littleendian::Put(bytes, at, static_cast<std::uint32_t>(number));
}

}  // namespace tessarine::builtin
