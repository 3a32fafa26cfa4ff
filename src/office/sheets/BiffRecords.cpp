#include "office/sheets/BiffRecords.h"

#include <algorithm>

#include "office/sheets/Refusal.h"

namespace tessarine::sheets
{

namespace
{

template <class Integer>
Integer LittleEndian(std::string_view data, std::size_t at)
{
    // A difference, as a sum of what a file says may overflow.
    if (at > data.size() || data.size() - at < sizeof(Integer))
        throw Damage("a record of its workbook is too short");
    std::uint64_t value = 0;
    for (std::size_t i = sizeof(Integer); i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(data[at + i]);
    return static_cast<Integer>(value);
}

}  // namespace

std::uint8_t BiffRecord::Byte(std::size_t at) const
{
    return LittleEndian<std::uint8_t>(data, at);
}

std::uint16_t BiffRecord::Short(std::size_t at) const
{
    return LittleEndian<std::uint16_t>(data, at);
}

std::uint32_t BiffRecord::Long(std::size_t at) const
{
    return LittleEndian<std::uint32_t>(data, at);
}

std::uint64_t BiffRecord::Quad(std::size_t at) const
{
    return LittleEndian<std::uint64_t>(data, at);
}

BiffStream::BiffStream(std::string_view stream, std::size_t offset) : stream_(stream), at_(offset)
{
    if (offset > stream.size())
        throw Damage("a sheet lies behind its workbook's end");
}

std::optional<BiffRecord> BiffStream::Next()
{
    constexpr std::size_t head = 4;
    // What is too short for a record is what the stream was filled up with.
    if (stream_.size() - at_ < head)
        return std::nullopt;
    const std::uint16_t type = LittleEndian<std::uint16_t>(stream_, at_);
    const std::size_t length = LittleEndian<std::uint16_t>(stream_, at_ + 2);
    at_ += head;
    if (stream_.size() - at_ < length)
        throw Damage("its workbook ends within a record");
    const BiffRecord record{type, stream_.substr(at_, length)};
    at_ += length;
    return record;
}

std::optional<BiffRecord> BiffStream::NextOf(std::uint16_t type)
{
    if (stream_.size() - at_ < 2 || LittleEndian<std::uint16_t>(stream_, at_) != type)
        return std::nullopt;
    return Next();
}

RecordBody::RecordBody(BiffStream& stream, const BiffRecord& record, std::size_t skipped)
    : stream_(stream), rest_(record.data)
{
    Skip(skipped);
}

void RecordBody::NextRecord()
{
    const auto record = stream_.NextOf(BiffType::Continue);
    if (!record)
        throw Damage("a text of its workbook ends too early");
    rest_ = record->data;
}

std::uint8_t RecordBody::Byte()
{
    // A Continue record may be empty, so one of them may not be enough.
    while (rest_.empty())
        NextRecord();
    const auto byte = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return byte;
}

std::uint16_t RecordBody::Short()
{
    // Byte by byte, since the next record may begin between the two.
    const unsigned low = Byte();
    return static_cast<std::uint16_t>(low | static_cast<unsigned>(Byte()) << 8);
}

std::uint32_t RecordBody::Long()
{
    const std::uint32_t low = Short();
    return low | static_cast<std::uint32_t>(Short()) << 16;
}

void RecordBody::Skip(std::size_t bytes)
{
    while (bytes > rest_.size()) {
        bytes -= rest_.size();
        NextRecord();
    }
    rest_.remove_prefix(bytes);
}

std::string_view RecordBody::Bytes(std::size_t count)
{
    if (count > rest_.size())
        throw Damage("a text of its workbook ends too early");
    const std::string_view bytes = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return bytes;
}

void RecordBody::AppendCharacters(std::size_t count, bool isWide, String& text)
{
    for (;;) {
        // A record ends between two characters. Memory is taken for those that are there, whatever `count` says.
        const std::size_t here = std::min(count, isWide ? rest_.size() / 2 : rest_.size());
        const auto byte = [&](std::size_t at) { return static_cast<unsigned>(static_cast<unsigned char>(rest_[at])); };
        const std::size_t before = text.size();
        text.resize(before + here);
        for (std::size_t i = 0; i < here; ++i)
            text[before + i] = static_cast<char16_t>(isWide ? byte(2 * i) | byte(2 * i + 1) << 8 : byte(i));
        rest_.remove_prefix(isWide ? 2 * here : here);
        count -= here;
        // Asked before the next record is taken: after the last character there are no flags.
        if (count == 0)
            return;
        NextRecord();
        isWide = (Byte() & 1) != 0;
    }
}

void ReadText(RecordBody& body, String& text)
{
    ReadText(body, body.Short(), text);
}

void ReadText(RecordBody& body, std::size_t count, String& text)
{
    const unsigned flags = body.Byte();
    const bool isWide = (flags & 0x01) != 0;
    const bool hasPhonetics = (flags & 0x04) != 0;
    const bool hasRuns = (flags & 0x08) != 0;
    const std::size_t runs = hasRuns ? body.Short() : 0;
    const std::size_t phonetics = hasPhonetics ? body.Long() : 0;
    text.clear();
    body.AppendCharacters(count, isWide, text);
    // A run has four bytes; phonetics are counted in bytes.
    body.Skip(4 * runs + phonetics);
}

}  // namespace tessarine::sheets
