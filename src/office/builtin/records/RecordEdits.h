#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace tessarine::builtin
{

/// Changes of records, kept beside the bytes that they belong to. Everything that no change names keeps its bytes, but
/// for the lengths of the containers around a change.
class RecordEdits
{
public:
    /// Puts `bytes`, whole records or nothing, in the place of the records between two offsets, which are children of
    /// one container. An empty range is an insertion in front of the record at `begin`; several there stay in their
    /// order, and in front of what takes that record's place. Ranges must not overlap otherwise.
    void Replace(std::size_t begin, std::size_t end, std::string bytes);

    /// Puts bytes in the place of as many others, anywhere in content that no range above holds.
    void Overwrite(std::size_t offset, std::string bytes) { overwritten_[offset] = std::move(bytes); }

    bool Empty() const { return edits_.empty() && overwritten_.empty(); }

    /// Whether there is a change between two offsets.
    bool HasChangeIn(std::size_t begin, std::size_t end) const;

    /// The record that begins at `offset` with its changes made. Raises `FileCorrupt` for a change that is not at
    /// records of it, and as RecordOf does.
    std::string Apply(std::string_view bytes, std::size_t offset) const;

private:
    struct Edit {
        std::size_t end = 0;
        std::string bytes;
    };
    using Edits = std::map<std::size_t, Edit>;

    void AppendRecords(std::string_view bytes, std::size_t begin, std::size_t end, std::string& target) const;
    void AppendContent(std::string_view bytes, std::size_t begin, std::size_t end, std::string& target) const;

    Edits edits_;                                     // by where they begin
    std::map<std::size_t, std::string> overwritten_;  // by offset
};

}  // namespace tessarine::builtin
