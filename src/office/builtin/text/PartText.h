#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/String.h"

namespace tessarine::builtin
{

/// A text to look for, prepared for asking many parts.
struct SoughtText {
    explicit SoughtText(const String& findWhat);

    std::uint64_t serial;  ///< Tells this text from those prepared before; never 0.
    String text;
    String folded;
    bool hasBreaks = false;              ///< Holds control characters, such as paragraph breaks.
    std::vector<std::uint32_t> triples;  ///< Hashes of every three units in a row of the folded text.
};

/// Which three units in a row a text has, by their hashes: a quick way to a no, for what is asked again and again.
class TripleTable
{
public:
    TripleTable() = default;  ///< Not made: may only be asked for that.
    explicit TripleTable(std::size_t textLength);

    bool IsMade() const { return !bits_.empty(); }
    void Add(StringView folded);
    bool HoldsAll(const SoughtText& sought) const;  ///< False only when one is missing.

private:
    std::vector<bool> bits_;
};

/// All text of a part with a shape tree, one run after the other, without its structure: enough to tell that a text
/// does not occur in any of its shapes, at a fraction of what reading the shapes costs. Most parts of most files hold
/// nothing that is looked for.
class PartText
{
public:
    /// Gathers the text of all elements named "t" (a:t) of a part in UTF-8. Nothing for a part that needs a proper
    /// reading: markup that is not balanced, CDATA, comments, processing instructions, escaped control characters.
    static std::optional<PartText> Gather(std::string_view xml);

    /// False only when no text body of the part holds the text, whatever the case.
    bool MayHold(const SoughtText& sought);

    StringView Folded() const { return folded_; }

private:
    explicit PartText(String folded) : folded_(std::move(folded)) {}

    bool HoldsTriples(const SoughtText& sought);

    String folded_;
    TripleTable triples_;  // made when a second text is looked for
    std::uint64_t lastSerial_ = 0;
    bool lastAnswer_ = false;
};

}  // namespace tessarine::builtin
