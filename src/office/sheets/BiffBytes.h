#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/String.h"

namespace tessarine::sheets
{

/// The data of a record, put together from little-endian values. Each member appends and gives the object back, so that
/// a record reads as one expression.
class BiffBytes
{
public:
    /// One, two, four or eight bytes; what of the value doesn't fit is cut off.
    BiffBytes& Byte(std::uint32_t value) { return Put(value, 1); }
    BiffBytes& Short(std::uint32_t value) { return Put(value, 2); }
    BiffBytes& Long(std::uint32_t value) { return Put(value, 4); }
    BiffBytes& Quad(std::uint64_t value) { return Put(value, 8); }
    /// Two bytes each.
    BiffBytes& Shorts(std::initializer_list<std::uint32_t> values)
    {
        for (const std::uint32_t value : values)
            Short(value);
        return *this;
    }
    /// Bytes as they are.
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

    /// What has been appended so far.
    const std::string& bytes() const { return bytes_; }

    /// The record of a type with these bytes as data, 8224 at most (maxRecordBytes): what is longer has to go on in
    /// Continue records, which SharedTexts makes.
    std::string Record(std::uint16_t type) const
    {
        return BiffBytes().Short(type).Short(static_cast<std::uint32_t>(bytes_.size())).Raw(bytes_).bytes();
    }

private:
    /// The lower `size` bytes of a value, the lowest first.
    BiffBytes& Put(std::uint64_t value, std::size_t size)
    {
        for (std::size_t i = 0; i < size; ++i, value >>= 8)
            bytes_ += static_cast<char>(value & 0xFF);
        return *this;
    }

    std::string bytes_;
};

}  // namespace tessarine::sheets
