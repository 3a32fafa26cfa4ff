#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

/// Whether a kind of page can have a header: notes and handouts can, slides and their masters can't, whatever a file
/// says. The header of one that can't raises `InvalidRequest` on reading and on putting.
enum class CanHaveHeader { No, Yes };

/// The header and footer of a page. They are there as objects always; their text raises `InvalidRequest` where the page
/// shows none. Putting the text that is there is no edit. Line ends that are put become paragraph breaks.
std::shared_ptr<powerpoint::HeadersFooters> MakeHeadersFooters(OpenFileReference file, PageReader& page,
                                                               CanHaveHeader canHaveHeader);

}  // namespace tessarine::builtin
