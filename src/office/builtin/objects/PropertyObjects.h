#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

/// The 34 built-in document properties in PowerPoint's order. One that PowerPoint leaves undefined raises `Unspecified`
/// on reading while the file doesn't hold it, and one that it keeps to itself raises it on putting. A text of more than
/// 255 units raises `BadArgument`. In both collections a bad index raises `BadArgument`, and putting what is there is
/// no edit.
std::shared_ptr<powerpoint::DocumentProperties> MakeBuiltInProperties(OpenFileReference file);

/// The custom document properties in the order of the file. Their number is that at the moment of this call; it never
/// changes while a presentation is open.
std::shared_ptr<powerpoint::DocumentProperties> MakeCustomProperties(OpenFileReference file);

}  // namespace tessarine::builtin
