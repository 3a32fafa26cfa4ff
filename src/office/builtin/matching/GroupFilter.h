#pragma once

#include <optional>
#include <vector>

#include "office/builtin/matching/PartFilter.h"

namespace tessarine::builtin
{

/// The filter in front of many parts, such as all slides: may any of them hold a text? What occurs nowhere in a file
/// costs a run with hundreds of pairs next to nothing.
class GroupFilter final : public TextFilter
{
public:
    explicit GroupFilter(std::vector<PartFilter*> parts) : parts_(std::move(parts)) {}  ///< Borrows them.

    /// Gathers the parts' text where that was not done before; for the first text only up to the part that may hold it.
    bool MayHold(const SoughtText& sought) override;

    bool HasGathered() const;  ///< From all parts.

private:
    /// True as well where the table of triples can't tell.
    bool MayHoldTriples(const SoughtText& sought);

    std::vector<PartFilter*> parts_;
    TripleTable triples_;          // made when a second text is looked for
    std::optional<String> first_;  // the text that was asked for first
};

}  // namespace tessarine::builtin
