#pragma once

#include <cstdint>
#include <vector>

#include "office/builtin/text/PartText.h"

namespace tessarine::builtin
{

class ShapeTreePart;

/// The text of many parts, such as all slides, asked at once: what occurs nowhere in a file costs a run with hundreds
/// of pairs next to nothing.
class TextOfParts
{
public:
    explicit TextOfParts(std::vector<ShapeTreePart*> parts) : parts_(std::move(parts)) {}

    /// False only when no shape's text of any of the parts holds what is sought, whatever the case. Reads the parts
    /// when first asked. Raises as reading them does.
    bool MayHold(const SoughtText& sought);

    bool IsGathered() const;  ///< All parts were read before.

private:
    bool MayHoldTriples(const SoughtText& sought);

    std::vector<ShapeTreePart*> parts_;
    TripleTable triples_;  // made when a second text is looked for
    std::uint64_t firstSerial_ = 0;
};

}  // namespace tessarine::builtin
