#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "office/builtin/xml/ByteBlock.h"

namespace tessarine::builtin
{

/// What the one pass over a part's bytes that gathering its text needs has counted. It goes by pairs of characters
/// alone: "<" begins a tag, "</" an end tag, and "/>" ends an empty one.
struct TagTotals {
    std::ptrdiff_t unclosed = 0;  ///< Start tags without end tags; 0 for markup that is balanced.
    std::size_t others = 0;       ///< Comments, declarations and the like: "<!" and "<?".

    bool AreBalanced() const { return unclosed == 0; }
};

/// What a pair of characters means, for the pairs that begin in a block.
struct TagBlock {
    /// Reads one byte more than a block has.
    explicit TagBlock(const char* bytes)
        : first(bytes),
          second(bytes + 1),
          open(first.Matches('<')),
          end(open & second.Matches('/')),
          empty(first.Matches('/') & second.Matches('>'))
    {
    }

    /// Where "<t" or ":t" stands.
    ByteBlock TextTags() const { return (open | first.Matches(':')) & second.Matches('t'); }
    /// Where "<!" or "<?" stands.
    ByteBlock Others() const { return open & (second.Matches('!') | second.Matches('?')); }

    /// What the pairs of some bits add to the number of open elements.
    std::ptrdiff_t DepthUpTo(std::uint32_t bits) const
    {
        return std::popcount(open.TopBits() & bits) - 2 * std::popcount(end.TopBits() & bits) -
               std::popcount(empty.TopBits() & bits);
    }

    ByteBlock first, second;     // the characters of each pair
    ByteBlock open, end, empty;  // where "<", "</", "/>" stand
};

/// Counts the tags and calls `candidate(place, depth)`, front to back, with the place of every "<t" and ":t", where the
/// tag of a text element may be. `depth()` gives how many elements are open there, that one among them; "<!" and "<?"
/// in front of the place count as well. Calls `doubtful(from, to)` for each stretch of bytes that has characters which
/// may not be those of a well-formed part, controls and others than ASCII; nearly all stretches have none.
template <class Candidate, class Doubtful>
TagTotals ScanTags(std::string_view xml, Candidate&& candidate, Doubtful&& doubtful)
{
    using Counter = ByteBlock::Counter;
    struct BlockWithPlaces {
        std::size_t at;
        std::uint32_t places;  // a bit for each
        Counter depthBefore;   // from `depth`
    };
    std::array<BlockWithPlaces, Counter::mostSteps> found;  // looked at after a stretch of blocks: calls would slow it
    std::ptrdiff_t depth = 0;
    std::size_t others = 0;
    std::size_t at = 0;
    // Two characters in a row are looked at, so that a block reads one beyond its end.
    while (at + ByteBlock::size < xml.size()) {
        const std::size_t stretch = at;
        std::size_t foundBlocks = 0;
        ByteBlock doubts = ByteBlock::None();
        Counter depthOfBlocks;
        Counter othersOfBlocks;
        for (int step = 0; step < Counter::mostSteps && at + ByteBlock::size < xml.size(); ++step) {
            const TagBlock block(xml.data() + at);
            if (const std::uint32_t places = block.TextTags().TopBits(); places != 0)
                found[foundBlocks++] = {at, places, depthOfBlocks};
            depthOfBlocks.Add(block.open);
            depthOfBlocks.Subtract(block.end);
            depthOfBlocks.Subtract(block.end);
            depthOfBlocks.Subtract(block.empty);
            othersOfBlocks.Add(block.Others());
            doubts = doubts | block.first.NotPrintable();
            at += ByteBlock::size;
        }
        for (std::size_t i = 0; i < foundBlocks; ++i) {
            for (std::uint32_t places = found[i].places; places != 0; places &= places - 1) {
                candidate(found[i].at + static_cast<std::size_t>(std::countr_zero(places)), [&] {
                    const TagBlock block(xml.data() + found[i].at);
                    return depth + found[i].depthBefore.Sum() + block.DepthUpTo(places ^ (places - 1));
                });
            }
        }
        if (doubts.TopBits() != 0)
            doubtful(stretch, at);
        depth += depthOfBlocks.Sum();
        others += static_cast<std::size_t>(othersOfBlocks.Sum());
    }
    doubtful(at, xml.size());
    for (; at + 1 < xml.size(); ++at) {
        const char first = xml[at];
        const char second = xml[at + 1];
        depth -= first == '/' && second == '>';
        if (first == '<') {
            depth += second == '/' ? -1 : 1;
            others += second == '!' || second == '?';
        }
        if ((first == '<' || first == ':') && second == 't')
            candidate(at, [&] { return depth; });
    }
    return {depth - static_cast<std::ptrdiff_t>(others), others};
}

}  // namespace tessarine::builtin
