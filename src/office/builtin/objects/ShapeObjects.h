#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

/// The shapes of a page, with their texts and the sources of linked objects.
std::shared_ptr<powerpoint::Shapes> MakeShapes(OpenFileReference file, PageReader& page);

}  // namespace tessarine::builtin
