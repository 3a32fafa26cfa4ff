#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

/// Whether a kind of page can have a header: notes and handouts can, slides and their masters can't, whatever a file
/// says.
enum class CanHaveHeader { No, Yes };

/// The header and footer of a page. They are there as objects always; their text raises `InvalidRequest` where the page
/// shows none.
std::shared_ptr<powerpoint::HeadersFooters> MakeHeadersFooters(OpenFileReference file, PageReader& page,
                                                               CanHaveHeader canHaveHeader);

}  // namespace tessarine::builtin
