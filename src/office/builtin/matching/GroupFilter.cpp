#include "office/builtin/matching/GroupFilter.h"

#include <algorithm>
#include <utility>

namespace tessarine::builtin
{

bool GroupFilter::MayHold(const SoughtText& sought)
{
    if (!first_)
        first_ = sought.Text();
    // A run may look for one text alone, for which the table would be made in vain.
    if (*first_ != sought.Text() && !MayHoldTriples(sought))
        return false;
    return std::ranges::any_of(parts_, [&](PartFilter* part) { return part->MayHold(sought); });
}

bool GroupFilter::HasGathered() const
{
    return std::ranges::all_of(parts_, &PartFilter::HasGathered);
}

bool GroupFilter::MayHoldTriples(const SoughtText& sought)
{
    // What lies between runs is in no gathered text, and a part that declines may hold anything.
    if (sought.HasControls() || std::ranges::any_of(parts_, &PartFilter::Declines))
        return true;
    if (!triples_.IsMade()) {
        std::size_t units = 0;
        for (const PartFilter* const part : parts_)
            units += part->Units();
        TripleTable triples(units);
        for (PartFilter* const part : parts_) {
            // Gathered again where it was let go, which may fail when somebody else has changed the file.
            const String* const text = part->Text();
            if (text == nullptr)
                return true;
            triples.Add(*text);
        }
        triples_ = std::move(triples);
    }
    return triples_.HoldsAll(sought.Triples());
}

}  // namespace tessarine::builtin
