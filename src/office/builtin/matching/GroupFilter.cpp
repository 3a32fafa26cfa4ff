#include "office/builtin/matching/GroupFilter.h"

#include <algorithm>

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
    const auto declines = [](PartFilter* part) { return part->Text() == nullptr; };
    // What lies between runs is in no gathered text, and a part that declines may hold anything.
    if (sought.HasControls() || std::ranges::any_of(parts_, declines))
        return true;
    if (!triples_.IsMade()) {
        std::size_t units = 0;
        for (PartFilter* const part : parts_)
            units += part->Text()->size();
        triples_ = TripleTable(units);
        for (PartFilter* const part : parts_)
            triples_.Add(*part->Text());
    }
    return triples_.HoldsAll(sought.Triples());
}

}  // namespace tessarine::builtin
