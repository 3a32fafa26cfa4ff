#pragma once

#include <memory>

#include "model/PowerPoint.h"

namespace tessarine::builtin
{

/// The built-in presentation engine behind the automation surface: PowerPoint's members over Office Open XML files
/// (.pptx .pptm .potx .potm .ppsx .ppsm), told apart by content.
///
/// Open raises -2147467259 for a file that needs a password (and for nothing else), -2147024894, -2147024893 and
/// -2147024891 for a missing file, a missing folder and a lacking permission, -2147024864 for a file that is locked or
/// open already, -2147023504 for a damaged one and -2147024885 for anything that is no presentation, binary
/// presentations included. It never raises 462 or -2147023170.
std::shared_ptr<powerpoint::Provider> CreateProvider();

}  // namespace tessarine::builtin
