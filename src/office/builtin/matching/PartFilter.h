#pragma once

#include <functional>
#include <optional>

#include "office/builtin/matching/TextFilter.h"
#include "office/builtin/matching/TripleTable.h"

namespace tessarine::builtin
{

/// The filter in front of one part.
class PartFilter final : public TextFilter
{
public:
    /// Gives all text of a part, case folded (FoldCaseWidely): each shape's text without its control characters is
    /// somewhere in it, in one piece. Nothing when it can't be told. Called once at most.
    using Gather = std::function<std::optional<String>()>;

    explicit PartFilter(Gather gather) : gather_(std::move(gather)) {}

    /// Gathers the text when it is first asked.
    bool MayHold(const SoughtText& sought) override;

    void Decline();                                    ///< Yes from now on: the part's text is about to change.
    bool HasGathered() const { return hasGathered_; }  ///< Was asked, or declines; a question costs little now.
    const String* Text();                              ///< What was gathered; null when the part declines.

private:
    /// Looks at the gathered text, which is there.
    bool Holds(const SoughtText& sought);

    Gather gather_;
    bool hasGathered_ = false;
    std::optional<String> text_;       // folded; nothing when the part declines
    TripleTable triples_;              // made when a second text is looked for
    std::optional<String> lastAsked_;  // the locations of one pair ask one after the other, each for the same text
    bool lastAnswer_ = false;
};

}  // namespace tessarine::builtin
