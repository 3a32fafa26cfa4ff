#pragma once

#include <cstddef>
#include <memory>

#include "model/PowerPoint.h"

namespace tessarine::builtin
{

/// The range of a hit in a shape's text, which is the range `text` and is kept alive. Position and length are UTF-16
/// units, the position counts from 0. The range stays where it was found, whatever is edited later; a search in it
/// finds only hits that begin inside it, and a replacement without such a hit changes nothing. Raises `Overflow` for a
/// place beyond 32 bits.
std::shared_ptr<powerpoint::TextRange> MakeHitRange(std::shared_ptr<powerpoint::TextRange> text, std::size_t position,
                                                    std::size_t length);

}  // namespace tessarine::builtin
