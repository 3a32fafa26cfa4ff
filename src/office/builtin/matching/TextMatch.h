#pragma once

#include <cstddef>
#include <optional>

#include "office/builtin/matching/ProtectedRanges.h"
#include "office/builtin/matching/SoughtText.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// A text to look for, and which of its occurrences are hits. Borrows the text.
class TextPattern
{
public:
    TextPattern(const SoughtText& sought, bool matchCase, bool wholeWords)
        : sought_(sought), matchCase_(matchCase), wholeWords_(wholeWords)
    {
    }
    /// A temporary would be gone before the pattern is used.
    TextPattern(SoughtText&&, bool, bool) = delete;

    /// What to look for, in the form in which the text is searched: folded unless case matters.
    const String& Units() const { return matchCase_ ? sought_.Text() : sought_.Folded(); }
    /// Whether capital and small letters differ.
    bool MatchCase() const { return matchCase_; }
    /// Whether a hit may have no word character beside it.
    bool WholeWords() const { return wholeWords_; }

private:
    const SoughtText& sought_;
    bool matchCase_;
    bool wholeWords_;
};

/// First hit at or after `from`; nothing when there is none. `searched` is the text in the form that the pattern wants
/// (folded unless case matters), `text` the text itself, of the same length. Positions are UTF-16 units from 0. An
/// empty pattern has no hit.
///
/// Everything is literal: no wildcards, LF is not a paragraph break (CR is), quotes, blanks and hyphens of different
/// kinds are different, accents count. A hit never splits a surrogate pair. A whole word is one whose neighbours on
/// both sides are no word characters (letters, digits, combining marks, "_").
///
/// Both may be the rest of a longer text that begins two units or more in front of `from`; `offset` is where it begins
/// in the whole, for the protected ranges.
std::optional<std::size_t> FindText(StringView searched, StringView text, const TextPattern& pattern, std::size_t from,
                                    const ProtectedRanges& protectedRanges, std::size_t offset = 0);

}  // namespace tessarine::builtin
