#include "support/StoredBag.h"

#include <stdexcept>

namespace tessarine::test
{

namespace
{

constexpr std::size_t headerLength = 24;

std::string Start()
{
    return {'\x89', 'T', 'S', 'Q', '\r', '\n', '\x1A', '\n'};
}

/// Bit by bit, as the page describes it.
std::uint32_t Checksum(const std::string& bytes)
{
    std::uint32_t rest = 0xFFFFFFFF;
    for (const char byte : bytes) {
        rest ^= static_cast<std::uint8_t>(byte);
        for (int bit = 0; bit < 8; ++bit)
            rest = (rest & 1) != 0 ? rest >> 1 ^ 0xEDB88320u : rest >> 1;
    }
    return rest ^ 0xFFFFFFFF;
}

std::string LowByteFirst(std::uint64_t value, int bytes)
{
    std::string result;
    for (int at = 0; at < bytes; ++at, value /= 256)
        result += static_cast<char>(value % 256);
    return result;
}

void Require(bool holds, const char* rule)
{
    if (!holds)
        throw std::runtime_error(rule);
}

struct Cursor {
    const std::string& block;
    std::size_t at = 0;

    std::string Bytes(std::uint64_t count)
    {
        Require(count <= block.size() - at, "a record ends inside the block");
        at += count;
        return block.substr(at - count, count);
    }

    std::uint64_t Number(int bytes)
    {
        const std::string digits = Bytes(static_cast<std::uint64_t>(bytes));
        std::uint64_t value = 0;
        for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit)
            value = value * 256 + static_cast<std::uint8_t>(*digit);
        return value;
    }
};

}  // namespace

std::vector<StoredRecord> ReadStoredBag(const std::string& file)
{
    Cursor header{file};
    Require(header.Bytes(8) == Start(), "the file begins with the eight bytes");
    Require(header.Number(4) == 1, "the version is 1");
    const std::uint64_t length = header.Number(8);
    const std::uint64_t count = header.Number(4);
    Require(length >= headerLength + 4 && length <= file.size(), "the block lies in the file");

    const std::string block = file.substr(0, length - 4);
    Cursor cursor{block, headerLength};
    std::vector<StoredRecord> records;
    for (std::uint64_t record = 0; record < count; ++record) {
        const std::uint64_t type = cursor.Number(1);
        Require(type >= 1 && type <= 3, "the type is known");
        StoredRecord read{cursor.Bytes(cursor.Number(4)), {}};
        if (type == 1)
            read.value = cursor.Number(1) == 1;
        else if (type == 2)
            read.value = static_cast<std::int32_t>(cursor.Number(4));
        else
            read.value = cursor.Bytes(cursor.Number(8));
        records.push_back(read);
    }
    Require(cursor.at == block.size(), "the records fill the block");
    Cursor end{file, block.size()};
    Require(end.Number(4) == Checksum(block), "the checksum fits");
    return records;
}

std::string RecordBytes(const StoredRecord& record)
{
    const std::string name = LowByteFirst(record.name.size(), 4) + record.name;
    if (const auto* boolean = std::get_if<bool>(&record.value))
        return '\1' + name + static_cast<char>(*boolean);
    if (const auto* integer = std::get_if<std::int32_t>(&record.value))
        return '\2' + name + LowByteFirst(static_cast<std::uint32_t>(*integer), 4);
    const std::string& text = std::get<std::string>(record.value);
    return '\3' + name + LowByteFirst(text.size(), 8) + text;
}

std::string StoredBag(const std::vector<StoredRecord>& records)
{
    std::string bytes;
    for (const StoredRecord& record : records)
        bytes += RecordBytes(record);
    return BlockAround(bytes, static_cast<std::uint32_t>(records.size()));
}

std::string BlockAround(const std::string& records, std::uint32_t count, std::uint32_t version)
{
    return WithChecksum(Start() + LowByteFirst(version, 4) + LowByteFirst(headerLength + records.size() + 4, 8) +
                        LowByteFirst(count, 4) + records + "sum.");
}

std::string WithChecksum(const std::string& block)
{
    const std::string bytes = block.substr(0, block.size() - 4);
    return bytes + LowByteFirst(Checksum(bytes), 4);
}

}  // namespace tessarine::test
