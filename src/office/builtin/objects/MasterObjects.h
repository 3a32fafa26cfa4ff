#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/objects/HeaderFooterObjects.h"
#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

/// A slide, title, notes or handout master. Null for `page` is one that the file doesn't have: it has no shapes, and
/// its header and footer read "" and take no text. `texts` says which of the two its kind has. The shapes are the same
/// objects for as long as the master is held. Making a master reads nothing.
std::shared_ptr<powerpoint::Master> MakeMaster(OpenFileReference file, PageReader* page, PageTexts texts);

}  // namespace tessarine::builtin
