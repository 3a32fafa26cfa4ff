#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/objects/DesignObjects.h"
#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

/// The slides of a presentation with their notes pages. The slides hand out the designs' own objects. A slide keeps the
/// objects of its shapes and of its notes page; its links are made anew for every walk. A slide without a notes page
/// has one without shapes; no slide can have a header. Slides and notes pages are read when something of theirs is
/// first asked for; what is damaged raises `FileCorrupt` then.
std::shared_ptr<powerpoint::Slides> MakeSlides(OpenFileReference file, std::shared_ptr<DesignsObject> designs);

}  // namespace tessarine::builtin
