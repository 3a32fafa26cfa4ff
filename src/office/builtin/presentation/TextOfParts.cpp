#include "office/builtin/presentation/TextOfParts.h"

#include <algorithm>

#include "office/builtin/shapes/ShapeTreePart.h"

namespace tessarine::builtin
{

bool TextOfParts::MayHold(const SoughtText& sought)
{
    if (firstSerial_ == 0)
        firstSerial_ = sought.serial;
    if (sought.serial != firstSerial_ && !sought.hasBreaks && !MayHoldTriples(sought))
        return false;
    return std::ranges::any_of(parts_, [&](ShapeTreePart* part) { return part->MayHold(sought); });
}

bool TextOfParts::IsGathered() const
{
    return std::ranges::all_of(parts_, &ShapeTreePart::IsGathered);
}

bool TextOfParts::MayHoldTriples(const SoughtText& sought)
{
    const auto needsAsking = [](ShapeTreePart* part) { return part->UnstructuredText() == nullptr; };
    if (std::ranges::any_of(parts_, needsAsking))
        return true;
    if (!triples_.IsMade()) {
        std::size_t length = 0;
        for (ShapeTreePart* const part : parts_)
            length += part->UnstructuredText()->Folded().size();
        triples_ = TripleTable(length);
        for (ShapeTreePart* const part : parts_)
            triples_.Add(part->UnstructuredText()->Folded());
    }
    return triples_.HoldsAll(sought);
}

}  // namespace tessarine::builtin
