#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

/// The shapes of a page, with their texts and the sources of linked objects. A shape without a text frame raises
/// `InvalidRequest` for its text, one that isn't a linked object for its source.
///
/// Find and Replace skip the first `After` UTF-16 units (a negative number is 0) and give null when there is no hit.
/// Replace takes one hit and gives the range of what it has put in, with line ends as paragraph breaks.
///
/// A source that is too long leaves the object as it is, which is a warning. `slide` is the page's number in it, 0 for
/// a page that is no slide.
std::shared_ptr<powerpoint::Shapes> MakeShapes(OpenFileReference file, PageReader& page, std::size_t slide = 0);

}  // namespace tessarine::builtin
