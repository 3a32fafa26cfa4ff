#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/reader/PresentationReader.h"

namespace tessarine::builtin
{

/// The surface's presentation over an opened file of any format. `path` is where Save writes. After Close every member
/// raises `InvalidRequest`; slides and other objects that somebody holds go on working, and keep the reader alive. Save
/// raises what PresentationReader::Save raises. UpdateLinks does nothing, as sources of links are never opened.
std::shared_ptr<powerpoint::Presentation> MakePresentation(std::shared_ptr<PresentationReader> reader, String path);

}  // namespace tessarine::builtin
