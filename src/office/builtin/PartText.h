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
    bool hasBreaks = false;            ///< Holds control characters, such as paragraph breaks.
    std::vector<std::size_t> triples;  ///< Hashes of every three units in a row of the folded text.
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

private:
    explicit PartText(String folded) : folded_(std::move(folded)) {}

    bool HoldsTriples(const SoughtText& sought);

    String folded_;
    std::vector<bool> triples_;  // by hash of three units in a row; made when a second text is looked for
    std::uint64_t lastSerial_ = 0;
    bool lastAnswer_ = false;
};

}  // namespace tessarine::builtin
