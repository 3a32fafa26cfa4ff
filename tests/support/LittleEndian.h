#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Little-endian values for binary files that tests write down.
namespace tessarine::test::little
{

std::string Byte(std::uint32_t value);
std::string Short(std::uint32_t value);
std::string Long(std::uint32_t value);
std::string LongLong(std::uint64_t value);
std::string Double(double value);
std::string Wide(std::u16string_view text);  ///< Two bytes for each unit.

void PutShort(std::string& bytes, std::size_t at, std::uint32_t value);  ///< Over two bytes that are there.
void PutLong(std::string& bytes, std::size_t at, std::uint32_t value);   ///< Over four.

}  // namespace tessarine::test::little
