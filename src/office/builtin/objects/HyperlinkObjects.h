#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

/// The hyperlinks of a page as they are now. To be made anew for every use, since an edit of a text may remove links; a
/// link that has gone in the meantime raises `InvalidRequest`. Putting the address that a link has is no edit. `page`
/// belongs to the file, which the objects keep alive; so it is for all objects of a page. A jump inside of the
/// presentation has the address "".
std::shared_ptr<powerpoint::Hyperlinks> MakeHyperlinks(OpenFileReference file, PageReader& page);

}  // namespace tessarine::builtin
