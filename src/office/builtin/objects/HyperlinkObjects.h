#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

/// The hyperlinks of a page as they are now. To be made anew for every use, since an edit of a text may remove links; a
/// link that has gone in the meantime raises `InvalidRequest`. Putting the address that a link has is no edit. `page`
/// belongs to the file, which the objects keep alive; so it is for all objects of a page. A jump inside of the
/// presentation has the address "". An address that is too long for a link leaves the link as it is, which is a warning
/// that names the slide of that number.
std::shared_ptr<powerpoint::Hyperlinks> MakeHyperlinks(OpenFileReference file, PageReader& page, std::size_t slide);

}  // namespace tessarine::builtin
