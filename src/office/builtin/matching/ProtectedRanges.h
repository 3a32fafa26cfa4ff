#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace tessarine::builtin
{

/// Units of a text that a hit must leave alone. With a length of 0 it is a place that a hit may not span.
struct ProtectedRange {
    std::size_t begin;  ///< In UTF-16 units from 0.
    std::size_t length;
};

/// All of a text, in the text's order; none of them overlaps another. Asking for one is quick however many there are,
/// and so is moving them along with edits from front to back.
class ProtectedRanges
{
public:
    ProtectedRanges() = default;
    ProtectedRanges(std::vector<ProtectedRange> ranges) : ranges_(std::move(ranges)) {}

    /// Whether units [begin, end) touch one of them.
    bool Touch(std::size_t begin, std::size_t end) const;

    /// Moves those after units [begin, begin + length), which have given way to `inserted` others. False, and nothing
    /// is moved, where it can't be told what becomes of them: the units touch one, or it is an insertion.
    bool Move(std::size_t begin, std::size_t length, std::size_t inserted);

    std::size_t KeptBytes() const { return ranges_.capacity() * sizeof(ProtectedRange); }  ///< Of memory.

private:
    std::size_t BeginOf(std::size_t index) const { return ranges_[index].begin + (index >= moved_ ? shift_ : 0); }
    /// The first that begins at or after a position.
    std::size_t FirstFrom(std::size_t position) const;

    std::vector<ProtectedRange> ranges_;
    // Ranges from the index `moved_` on begin so much further on than they say (modulo the type's range).
    std::size_t moved_ = 0;
    std::size_t shift_ = 0;
};

}  // namespace tessarine::builtin
