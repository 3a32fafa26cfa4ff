#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "office/builtin/xml/ByteBlock.h"

namespace tessarine::builtin
{

/// The places of certain characters in a text, front to back. Found 64 characters at a time, since nearly all of a
/// part's characters are none of them. Borrows the text.
template <char... wanted>
class CharacterMarks
{
public:
    /// Begins in front of the text's first character.
    explicit CharacterMarks(std::string_view text) : text_(text) { LoadBlock(); }

    /// The next place, or the text's size when there is none left.
    std::size_t Next()
    {
        while (marks_ == 0) {
            // This was the last block.
            if (text_.size() - block_ <= blockSize)
                return text_.size();
            block_ += blockSize;
            LoadBlock();
        }
        const std::size_t place = block_ + static_cast<std::size_t>(std::countr_zero(marks_));
        // Takes the lowest bit away, which is the place just found.
        marks_ &= marks_ - 1;
        return place;
    }

    /// The next place at or after `from`, which may not lie in front of the last place given.
    std::size_t NextFrom(std::size_t from)
    {
        // Blocks in between are not looked at: that is what makes long values and comments cheap.
        if (from - block_ >= blockSize && from < text_.size()) {
            block_ = from - from % blockSize;
            LoadBlock();
        }
        std::size_t place = Next();
        while (place < from)
            place = Next();
        return place;
    }

private:
    static constexpr std::size_t blockSize = 64;  // characters, one for each bit of marks_

    /// Sets marks_ for the block at block_. The last block may be shorter than the others; a copy of it is read, as a
    /// ByteBlock would reach beyond the text.
    void LoadBlock()
    {
        const std::size_t length = text_.size() - block_;
        if (length >= blockSize) {
            marks_ = MarksIn(text_.data() + block_);
            return;
        }
        std::array<char, blockSize> last{};
        std::copy_n(text_.data() + block_, length, last.begin());
        marks_ = MarksIn(last.data()) & ((std::uint64_t{1} << length) - 1);
    }

    /// A bit for each wanted character of a whole block.
    static std::uint64_t MarksIn(const char* block)
    {
        std::uint64_t marks = 0;
        for (std::size_t part = 0; part < blockSize; part += ByteBlock::size)
            marks |= static_cast<std::uint64_t>((ByteBlock(block + part).Matches(wanted) | ...).TopBits()) << part;
        return marks;
    }

    std::string_view text_;    // borrowed
    std::size_t block_ = 0;    // offset of the block that marks_ tells of
    std::uint64_t marks_ = 0;  // places in the block that are still to come
};

using MarkupMarks = CharacterMarks<'<', '>', '"', '\''>;  ///< All that delimits tags and attribute values.

}  // namespace tessarine::builtin
