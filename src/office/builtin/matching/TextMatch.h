#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "platform/String.h"

namespace tessarine::builtin
{

/// What is looked for: prepared once, used on many texts.
class TextPattern
{
public:
    TextPattern(const String& findWhat, bool matchCase, bool wholeWords);

    /// True when this is the pattern for these arguments.
    bool IsFor(const String& findWhat, bool matchCase, bool wholeWords) const
    {
        return matchCase == matchCase_ && wholeWords == wholeWords_ && findWhat == findWhat_;
    }

    const String& Units() const { return units_; }  ///< Folded when case does not matter.
    bool MatchCase() const { return matchCase_; }
    bool WholeWords() const { return wholeWords_; }

private:
    String findWhat_;
    String units_;
    bool matchCase_;
    bool wholeWords_;
};

/// Units of a text that a hit must leave alone. With a length of 0 it is a place that a hit may not span.
struct ProtectedRange {
    std::size_t begin;
    std::size_t length;
};

/// First hit at or behind `from`. `searched` is the text in the form that the pattern wants (folded or not), `text` the
/// text itself, of the same length. Positions are UTF-16 units from 0. An empty pattern has no hit.
///
/// Everything is literal: no wildcards, LF is not a paragraph break (CR is), quotes, blanks and hyphens of different
/// kinds are different, accents count. A hit never splits a surrogate pair. A whole word is one whose neighbours on
/// both sides are no word characters (letters, digits, combining marks, "_").
std::optional<std::size_t> FindText(StringView searched, StringView text, const TextPattern& pattern, std::size_t from,
                                    const std::vector<ProtectedRange>& protectedRanges);

}  // namespace tessarine::builtin
