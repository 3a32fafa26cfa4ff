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

/// What the one pass over a part's bytes that gathering its text needs has counted. It goes by pairs of characters
/// alone: "<" and a letter begin a start tag, "</" an end tag, and "/>" ends an empty one.
struct TagTotals {
    std::ptrdiff_t unclosed = 0;  ///< Start tags without end tags; 0 for markup that is balanced.
    /// "<" in front of anything else: comments, declarations, names that begin with another character.
    std::size_t others = 0;

    bool AreBalanced() const { return unclosed == 0; }
};

/// The largest character that no start tag of TagTotals begins with. Those after it, up to the end of ASCII, are
/// letters but for a few.
constexpr char beforeLetters = '@';

/// What a pair of characters means, for the pairs that begin in a block.
struct TagBlock {
    using Counter = ByteBlock::Counter;

    /// Reads one byte more than a block has.
    explicit TagBlock(const char* bytes)
        : first(bytes),
          second(bytes + 1),
          open(first.Matches('<')),
          start(open & second.GreaterThan(beforeLetters)),
          end(open & second.Matches('/')),
          empty(first.Matches('/') & second.Matches('>'))
    {
    }

    /// Where "<t" or ":t" stands.
    ByteBlock TextTags() const { return (open | first.Matches(':')) & second.Matches('t'); }
    /// Has the highest bit of each byte set that is not printable ASCII.
    ByteBlock Doubts() const { return first.LessThan(' '); }

    /// Adds the block's tags to the number of open elements, and what else "<" begins to the number of others.
    void Count(Counter& depth, Counter& others) const
    {
        depth.Add(start);
        depth.Subtract(end);
        depth.Subtract(empty);
        others.Add(open);
        others.Subtract(start);
        others.Subtract(end);
    }

    /// The number of open elements after the pair that begins at a place in the block. `depth` is that in front of it.
    int DepthAt(std::size_t place, Counter depth) const
    {
        constexpr auto masks = [] {
            std::array<char, 2 * ByteBlock::size> bytes{};
            std::fill_n(bytes.begin(), ByteBlock::size, '\xFF');
            return bytes;
        }();
        const ByteBlock upToPlace(masks.data() + ByteBlock::size - 1 - place);
        depth.Add(start & upToPlace);
        depth.Subtract(end & upToPlace);
        depth.Subtract(empty & upToPlace);
        return depth.Sum();
    }

    ByteBlock first, second;            // the characters of each pair
    ByteBlock open, start, end, empty;  // where "<", "<" with a letter, "</", "/>" stand
};

/// Counts the tags and calls `candidate(place, depth)`, front to back, with the place of every "<t" and ":t", where the
/// tag of a text element may be. `depth()` gives how many elements are open there, that one among them.
///
/// Calls `doubtful(from, to)`, front to back, for each row of blocks that have controls or bytes beyond ASCII, which
/// may not be characters of a well-formed part. Nearly all blocks have none.
template <class Candidate, class Doubtful>
TagTotals ScanTags(std::string_view xml, Candidate&& candidate, Doubtful&& doubtful)
{
    using Counter = ByteBlock::Counter;
    struct BlockWithPlaces {
        std::size_t at;
        std::uint32_t places;  // of candidates, a bit for each
        bool isDoubtful;
        Counter depthBefore;  // from `depth`
    };
    std::array<BlockWithPlaces, Counter::mostSteps> found;  // looked at after a stretch of blocks: calls would slow it
    std::ptrdiff_t depth = 0;
    std::size_t others = 0;
    std::size_t at = 0;
    std::size_t doubtsBegin = 0;
    std::size_t doubtsEnd = 0;
    // Two characters in a row are looked at, so that a block reads one beyond its end.
    const std::size_t blocksEnd = xml.size() - std::min(xml.size(), ByteBlock::size);
    while (at < blocksEnd) {
        std::size_t foundBlocks = 0;
        Counter depthOfBlocks;
        Counter othersOfBlocks;
        const std::size_t stretchEnd = std::min(at + Counter::mostSteps * ByteBlock::size, blocksEnd);
        for (; at < stretchEnd; at += ByteBlock::size) {
            const TagBlock block(xml.data() + at);
            const ByteBlock textTags = block.TextTags();
            const ByteBlock doubts = block.Doubts();
            if ((textTags | doubts).TopBits() != 0)
                found[foundBlocks++] = {at, textTags.TopBits(), doubts.TopBits() != 0, depthOfBlocks};
            block.Count(depthOfBlocks, othersOfBlocks);
        }
        for (std::size_t i = 0; i < foundBlocks; ++i) {
            if (found[i].isDoubtful) {
                if (found[i].at != doubtsEnd) {
                    doubtful(doubtsBegin, doubtsEnd);
                    doubtsBegin = found[i].at;
                }
                doubtsEnd = found[i].at + ByteBlock::size;
            }
            for (std::uint32_t places = found[i].places; places != 0; places &= places - 1) {
                const auto place = static_cast<std::size_t>(std::countr_zero(places));
                candidate(found[i].at + place, [&] {
                    return depth + TagBlock(xml.data() + found[i].at).DepthAt(place, found[i].depthBefore);
                });
            }
        }
        depth += depthOfBlocks.Sum();
        others += static_cast<std::size_t>(othersOfBlocks.Sum());
    }
    doubtful(doubtsBegin, doubtsEnd);
    // Whole blocks are looked at faster than single bytes.
    doubtful(blocksEnd, xml.size());
    for (; at + 1 < xml.size(); ++at) {
        const char first = xml[at];
        const char second = xml[at + 1];
        depth -= first == '/' && second == '>';
        if (first == '<') {
            const bool isStart = static_cast<signed char>(second) > beforeLetters;
            depth += isStart ? 1 : second == '/' ? -1 : 0;
            others += !isStart && second != '/';
        }
        if ((first == '<' || first == ':') && second == 't')
            candidate(at, [&] { return depth; });
    }
    return {depth, others};
}

}  // namespace tessarine::builtin
