#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

/// The shapes of a page, with their texts and the sources of linked objects. A shape without a text frame raises
/// `InvalidRequest` for its text, one that isn't a linked object for its source.
std::shared_ptr<powerpoint::Shapes> MakeShapes(OpenFileReference file, PageReader& page);

}  // namespace tessarine::builtin
