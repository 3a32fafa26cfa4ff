#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "office/builtin/binary/FormatRuns.h"
#include "office/builtin/matching/GapBuffer.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// What edits have made of a text, as far as its format goes. Each unit has an origin: the unit of the old text whose
/// format it has. New units have the origin of the first one that they replaced, so that origins never go down along
/// the text; with them, runs and positions of the old text become those of the new one in one pass.
class TextEdits
{
public:
    explicit TextEdits(StringView oldText);

    /// Takes note that `length` units gave way to `inserted` new ones.
    void Replace(std::size_t begin, std::size_t length, std::size_t inserted);

    /// Runs of characters for the new text and the end of its last paragraph. Runs without a unit go.
    std::vector<FormatRun> Characters(const std::vector<FormatRun>& runs) const;

    /// Runs of paragraphs. A paragraph that was joined has the format of its beginning throughout.
    std::vector<FormatRun> Paragraphs(const std::vector<FormatRun>& runs, StringView newText) const;

    /// Where a position between units of the old text is now: in front of the first unit that comes from it or later.
    /// One beyond the text is behind the end of its last paragraph, which some bookmarks include.
    std::size_t PositionOf(std::size_t position) const;

    /// Whether a unit of the old text is still there itself.
    bool Keeps(std::size_t unit) const;

private:
    static constexpr std::uint32_t isNew = 1u << 31;  // of an origin: the unit is not the old one

    std::uint32_t OriginOf(std::size_t unit) const { return unit < origins_.Size() ? origins_[unit] & ~isNew : end_; }

    String oldText_;
    std::uint32_t end_;  // of the old text
    GapBuffer<std::vector<std::uint32_t>> origins_;
};

}  // namespace tessarine::builtin
