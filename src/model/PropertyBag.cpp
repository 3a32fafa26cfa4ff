#include "model/PropertyBag.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "model/BagText.h"
#include "platform/CheckedInteger.h"
#include "platform/Crc32.h"
#include "platform/Failure.h"

namespace tessarine
{

namespace
{

// The eighth bit, both kinds of line end and the end sign of old systems show what a transfer as text has done.
constexpr std::string_view magic = "\x89TSQ\r\n\x1A\n";
constexpr std::uint32_t version = 1;
constexpr std::size_t checksumLength = 4;

enum class Type : std::uint8_t { Boolean = 1, Integer = 2, Text = 3 };

template <class Integer>
void Append(std::string& block, Integer value)
{
    // The least significant byte first, whatever the machine's own order.
    for (std::size_t byte = 0; byte < sizeof value; ++byte)
        block += static_cast<char>(value >> 8 * byte & 0xFF);
}

std::uint64_t IntegerIn(std::span<const std::byte> bytes)
{
    std::uint64_t value = 0;
    for (std::size_t byte = bytes.size(); byte-- > 0;)
        value = value << 8 | std::to_integer<std::uint64_t>(bytes[byte]);
    return value;
}

std::span<const std::byte> BytesOf(std::string_view text)
{
    return std::as_bytes(std::span(text));
}

struct AppendValue {
    std::string& block;

    void operator()(bool value) const { block += value ? '\1' : '\0'; }
    void operator()(std::int32_t value) const { Append(block, static_cast<std::uint32_t>(value)); }
    void operator()(const String& value) const
    {
        const std::string bytes = BagTextFrom(value);
        Append(block, static_cast<std::uint64_t>(bytes.size()));
        block += bytes;
    }
};

struct TypeOf {
    Type operator()(bool) const { return Type::Boolean; }
    Type operator()(std::int32_t) const { return Type::Integer; }
    Type operator()(const String&) const { return Type::Text; }
};

[[noreturn]] void RaiseInvalidFormat(const std::string& reason)
{
    throw Failure(FailureNumber::InvalidFileFormat, FromUtf8("Invalid file format: " + reason));
}

/// The records of a block, one part after the other. Every length is held against the bytes that are left.
class Reader
{
public:
    Reader(std::span<const std::byte> block, std::size_t begin) : block_(block), at_(begin) {}

    bool IsAtEnd() const { return at_ == block_.size(); }

    std::uint64_t Integer(std::size_t length) { return IntegerIn(Take(length)); }

    String Text(std::size_t lengthLength)
    {
        const std::size_t begin = at_;
        const auto bytes = Take(Integer(lengthLength));
        auto text = TextFromBag({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        if (!text)
            RaiseInvalidFormatAt(begin, "a text is not valid UTF-8");
        return *std::move(text);
    }

    PropertyBag::Value Value(std::uint64_t type)
    {
        const std::size_t begin = at_;
        switch (Type{static_cast<std::uint8_t>(type)}) {
            case Type::Boolean: {
                const std::uint64_t value = Integer(1);
                if (value > 1)
                    RaiseInvalidFormatAt(begin, "a boolean is neither 0 nor 1");
                return value == 1;
            }
            case Type::Integer:
                return static_cast<std::int32_t>(static_cast<std::uint32_t>(Integer(4)));
            case Type::Text:
                return Text(8);
        }
        RaiseInvalidFormatAt(begin, "there is no type " + std::to_string(type));
    }

    [[noreturn]] static void RaiseInvalidFormatAt(std::size_t offset, const std::string& reason)
    {
        RaiseInvalidFormat("at byte " + std::to_string(offset) + " " + reason);
    }

private:
    std::span<const std::byte> Take(std::uint64_t length)
    {
        // Subtracted, because the sum of a position and a length from a damaged file may overflow.
        if (length > block_.size() - at_)
            RaiseInvalidFormatAt(at_, "a record is longer than the block");
        const auto bytes = block_.subspan(at_, static_cast<std::size_t>(length));
        at_ += bytes.size();
        return bytes;
    }

    std::span<const std::byte> block_;
    std::size_t at_;
};

std::uint64_t VersionIn(std::span<const std::byte> header)
{
    return IntegerIn(header.subspan(magic.size(), 4));
}

/// Of everything from the first byte of the header to the last of the checksum.
std::uint64_t LengthIn(std::span<const std::byte> header)
{
    return IntegerIn(header.subspan(12, 8));
}

/// The block that `bytes` begin with, sound as far as header and checksum tell.
std::span<const std::byte> SoundBlock(std::span<const std::byte> bytes)
{
    // As far as the bytes reach, so that a short file of another kind is told to be no project and not a cut one.
    if (!std::ranges::equal(bytes.first(std::min(bytes.size(), magic.size())), BytesOf(magic)))
        RaiseInvalidFormat("this is not a project file");
    if (bytes.size() < PropertyBag::HeaderLength)
        RaiseInvalidFormat("the file ends inside its header");
    const std::uint64_t found = VersionIn(bytes);
    if (found != version)
        RaiseInvalidFormat("the project file has version " + std::to_string(found) +
                           ", and this program reads version " + std::to_string(version));
    const std::uint64_t length = LengthIn(bytes);
    if (length < PropertyBag::HeaderLength + checksumLength || length > PropertyBag::LongestBlock)
        RaiseInvalidFormat("the block gives its length as " + std::to_string(length));
    if (length > bytes.size())
        RaiseInvalidFormat("the file ends at byte " + std::to_string(bytes.size()) + ", its block at byte " +
                           std::to_string(length));

    const auto block = bytes.first(static_cast<std::size_t>(length) - checksumLength);
    // Before any record is read, so that damage is told as damage, whichever record it hit.
    if (IntegerIn(bytes.subspan(block.size(), checksumLength)) != Crc32(block))
        RaiseInvalidFormat("the checksum does not match, so the file is damaged");
    return block;
}

}  // namespace

void PropertyBag::WriteProperty(const String& name, Value value)
{
    Record& record = records_.emplace_back(Record{name, std::move(value)});
    const auto found = index_.emplace_hint(next_, record.name, &record);
    next_ = std::next(found);
    // The name is there already: its record keeps its place in the file and takes the new value.
    if (found->second != &record) {
        found->second->value = std::move(record.value);
        records_.pop_back();
    } else if (records_.size() > MostValues) {
        // Taken back, so that the bag is as it was before.
        index_.erase(found);
        records_.pop_back();
        throw Failure(FailureNumber::Overflow, u"Overflow");
    }
}

std::optional<PropertyBag::Value> PropertyBag::ReadProperty(StringView name) const
{
    const auto found = next_ != index_.end() && next_->first == name ? next_ : index_.find(name);
    if (found == index_.end())
        return std::nullopt;
    next_ = std::next(found);
    return found->second->value;
}

std::string PropertyBag::Contents() const
{
    std::string records;
    for (const Record& record : records_) {
        records += static_cast<char>(std::visit(TypeOf(), record.value));
        const std::string name = BagTextFrom(record.name);
        Append(records, Checked<std::uint32_t>(static_cast<std::int64_t>(name.size())));
        records += name;
        std::visit(AppendValue{records}, record.value);
        // Asked after each record, so that at most one record beyond the limit is ever built.
        if (records.size() > LongestBlock - HeaderLength - checksumLength)
            throw Failure(FailureNumber::Overflow, u"Overflow");
    }

    std::string block(magic);
    Append(block, version);
    Append(block, static_cast<std::uint64_t>(HeaderLength + records.size() + checksumLength));
    Append(block, static_cast<std::uint32_t>(records_.size()));
    block += records;
    Append(block, Crc32(BytesOf(block)));
    return block;
}

ProjectFault PropertyBag::FaultOf(std::span<const std::byte> bytes)
{
    // What little is there may be the beginning of a block.
    const std::size_t known = std::min(bytes.size(), magic.size());
    if (!std::ranges::equal(bytes.first(known), BytesOf(magic.substr(0, known))))
        return ProjectFault::OtherKind;
    if (bytes.size() < HeaderLength)
        return ProjectFault::Cut;
    if (VersionIn(bytes) != version)
        return ProjectFault::OtherVersion;
    const std::uint64_t length = LengthIn(bytes);
    return length > bytes.size() && length <= LongestBlock ? ProjectFault::Cut : ProjectFault::Damaged;
}

void PropertyBag::PutContents(std::span<const std::byte> bytes)
{
    const auto block = SoundBlock(bytes);
    const std::uint64_t count = IntegerIn(block.subspan(20, 4));
    if (count > MostValues)
        RaiseInvalidFormat("the block holds " + std::to_string(count) + " values");

    // Into a bag of its own, so that a fault found late leaves this one as it was.
    PropertyBag read;
    Reader reader(block, HeaderLength);
    for (std::uint64_t record = 0; record < count; ++record) {
        const std::uint64_t type = reader.Integer(1);
        const String name = reader.Text(4);
        read.WriteProperty(name, reader.Value(type));
        // WriteProperty puts the second value over the first, so a name that stood twice leaves one record too few.
        if (read.records_.size() != record + 1)
            RaiseInvalidFormat("the name " + ToUtf8(name) + " stands twice");
    }
    if (!reader.IsAtEnd())
        RaiseInvalidFormat("the block goes on behind its last record");
    records_.swap(read.records_);
    index_.swap(read.index_);
    next_ = index_.end();
}

std::optional<std::uint64_t> PropertyBag::BlockLength(std::span<const std::byte, HeaderLength> header)
{
    if (!std::ranges::equal(header.first<magic.size()>(), BytesOf(magic)))
        return std::nullopt;
    return IntegerIn(header.subspan<12, 8>());
}

}  // namespace tessarine
