#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/objects/HeaderFooterObjects.h"
#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

/// A master. Null for `page` is one that the file doesn't have: without shapes, its header and footer empty.
std::shared_ptr<powerpoint::Master> MakeMaster(OpenFileReference file, PageReader* page, CanHaveHeader canHaveHeader);

}  // namespace tessarine::builtin
