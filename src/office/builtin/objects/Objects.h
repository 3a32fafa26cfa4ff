#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/presentation/PresentationFile.h"

namespace tessarine::builtin
{

/// The surface's presentation over an opened file. `path` is where Save writes. After Close every member raises
/// -2147188160.
std::shared_ptr<powerpoint::Presentation> MakePresentation(std::shared_ptr<PresentationFile> file, String path);

}  // namespace tessarine::builtin
