#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "office/builtin/matching/SoughtText.h"
#include "platform/String.h"

namespace tessarine::builtin
{

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
