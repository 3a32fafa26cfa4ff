#include "support/LittleEndian.h"

#include <cstring>

namespace tessarine::test::little
{
namespace
{

std::string Bytes(std::uint64_t value, int count)
{
    std::string bytes;
    for (int i = 0; i < count; ++i, value >>= 8)
        bytes += static_cast<char>(value & 0xFF);
    return bytes;
}

}  // namespace

std::string Byte(std::uint32_t value)
{
    return Bytes(value, 1);
}

std::string Short(std::uint32_t value)
{
    return Bytes(value, 2);
}

std::string Long(std::uint32_t value)
{
    return Bytes(value, 4);
}

std::string LongLong(std::uint64_t value)
{
    return Bytes(value, 8);
}

std::string Double(double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return Bytes(bits, 8);
}

std::string Wide(std::u16string_view text)
{
    std::string bytes;
    for (const char16_t unit : text)
        bytes += Short(unit);
    return bytes;
}

void PutShort(std::string& bytes, std::size_t at, std::uint32_t value)
{
    bytes.replace(at, 2, Short(value));
}

void PutLong(std::string& bytes, std::size_t at, std::uint32_t value)
{
    bytes.replace(at, 4, Long(value));
}

}  // namespace tessarine::test::little
