#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/String.h"

namespace tessarine::sheets
{

/// The data of a record, put together from little-endian values.
class BiffBytes
{
public:
    BiffBytes& Byte(std::uint32_t value) { return Put(value, 1); }
    BiffBytes& Short(std::uint32_t value) { return Put(value, 2); }
    BiffBytes& Long(std::uint32_t value) { return Put(value, 4); }
    BiffBytes& Quad(std::uint64_t value) { return Put(value, 8); }
    BiffBytes& Shorts(std::initializer_list<std::uint32_t> values)
    {
        for (const std::uint32_t value : values)
            Short(value);
        return *this;
    }
    BiffBytes& Raw(std::string_view bytes)
    {
        bytes_ += bytes;
        return *this;
    }

    /// Characters of two bytes each or, when none needs more, of one.
    BiffBytes& Characters(StringView text, bool isWide)
    {
        for (const char16_t unit : text)
            Put(unit, isWide ? 2 : 1);
        return *this;
    }

    const std::string& bytes() const { return bytes_; }

    /// The record of a type with these bytes as data, 8224 at most.
    std::string Record(std::uint16_t type) const
    {
        return BiffBytes().Short(type).Short(static_cast<std::uint32_t>(bytes_.size())).Raw(bytes_).bytes();
    }

private:
    BiffBytes& Put(std::uint64_t value, std::size_t size)
    {
        for (std::size_t i = 0; i < size; ++i, value >>= 8)
            bytes_ += static_cast<char>(value & 0xFF);
        return *this;
    }

    std::string bytes_;
};

}  // namespace tessarine::sheets
