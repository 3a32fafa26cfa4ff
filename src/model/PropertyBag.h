#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <variant>

#include "model/ProjectFault.h"
#include "platform/String.h"

namespace tessarine
{

/// Named, typed values in one flat set, which as a whole are a block of bytes: what a project file consists of.
/// docs/formats/tsq.md describes the block byte by byte.
class PropertyBag
{
public:
    using Value = std::variant<bool, std::int32_t, String>;

    /// More values than this no bag takes, and more bytes no block has: a hostile file can't ask for more memory.
    static constexpr std::size_t MostValues = std::size_t{1} << 20;
    static constexpr std::uint64_t LongestBlock = std::uint64_t{1} << 30;

    PropertyBag() = default;
    PropertyBag(const PropertyBag&) = delete;
    PropertyBag& operator=(const PropertyBag&) = delete;

    /// Stores a value after those before it; a name that is there already keeps its place and gets the new value.
    /// Names are told apart by every letter and its case. Raises Overflow when the bag is full.
    void WriteProperty(const String& name, Value value);

    /// The value of a name, nothing when the bag has none.
    std::optional<Value> ReadProperty(StringView name) const;

    /// The whole bag as a block, values in the order of their writing. Raises Overflow when it would be longer
    /// than LongestBlock.
    std::string Contents() const;

    /// Replaces the whole bag by what a block holds; bytes after the block are ignored. Raises InvalidFileFormat with a
    /// text that tells the offset when the bytes do not begin with a sound block; the bag stays as it was.
    void PutContents(std::span<const std::byte> bytes);

    /// What is wrong with bytes that PutContents refuses.
    static ProjectFault FaultOf(std::span<const std::byte> bytes);

    /// Bytes at the start of a block that BlockLength needs.
    static constexpr std::size_t HeaderLength = 24;

    /// How long the block is that begins with `header`, as it says itself; nothing when a block does not begin so.
    static std::optional<std::uint64_t> BlockLength(std::span<const std::byte, HeaderLength> header);

private:
    struct Record {
        String name;
        Value value;
    };

    using Index = std::map<StringView, Record*>;

    std::deque<Record> records_;  // a deque, as the index points at the names
    Index index_;                 // by name; the order of the block is that of records_
    // Names are mostly written and read in their order within one item, so the place after the last one is tried
    // first.
    mutable Index::const_iterator next_ = index_.end();
};

}  // namespace tessarine
