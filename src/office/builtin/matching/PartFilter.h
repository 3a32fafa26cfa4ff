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
    /// somewhere in it, in one piece. Nothing when it can't be told. Called once, and once more for each text that is
    /// looked for after LetGo.
    using Gather = std::function<std::optional<String>()>;

    explicit PartFilter(Gather gather) : gather_(std::move(gather)) {}

    /// Gathers the text when it is first asked.
    bool MayHold(const SoughtText& sought) override;

    void Decline();                                    ///< Yes from now on: the part's text is about to change.
    bool HasGathered() const { return hasGathered_; }  ///< Was asked, or declines; a question costs little now.
    const String* Text();                              ///< What was gathered; null when the part declines.
    bool Declines() { return !isLetGo_ && Text() == nullptr; }

    /// Gives the memory of the gathered text back. It is gathered again for the next text that is looked for; the last
    /// answer stays.
    void LetGo();
    std::size_t KeptBytes() const;  ///< What it takes of memory.
    std::size_t Units() const
    {
        return units_;
    }  ///< Of the text, also of one that was let go. 0 before it is gathered.

private:
    /// Looks at the gathered text, which is there.
    bool Holds(const SoughtText& sought);

    Gather gather_;
    bool hasGathered_ = false;
    bool isLetGo_ = false;   // the text that was gathered
    bool wasLetGo_ = false;  // so, at some time
    std::size_t units_ = 0;
    std::optional<String> text_;       // folded; nothing when the part declines, or after LetGo
    TripleTable triples_;              // made when a second text is looked for
    std::optional<String> lastAsked_;  // the locations of one pair ask one after the other, each for the same text
    bool lastAnswer_ = false;
};

}  // namespace tessarine::builtin
