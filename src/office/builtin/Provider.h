#pragma once

#include <memory>

#include "model/PowerPoint.h"

namespace tessarine::builtin
{

/// The built-in presentation engine behind the automation surface: PowerPoint's members over Office Open XML files
/// (.pptx .pptm .potx .potm .ppsx .ppsm), which are told by their content, not by their names.
///
/// `Presentations::Open` raises
/// - `Unspecified` for a file that needs a password, to be opened or to be changed, and for nothing else;
/// - `SystemFileNotFound`, `SystemPathNotFound` and `AccessDenied` for a missing file, a missing folder and a lacking
///   permission;
/// - `SharingViolation` for a file that is locked, or open already in the same application;
/// - `FileCorrupt` for a damaged presentation, and `BadFormat` for anything else than a presentation. Binary
///   presentations (.ppt) count as something else so far.
///
/// It never raises `ServerGone` or `RemoteCallFailed`, after which a run would start PowerPoint again and try the file
/// once more.
std::shared_ptr<powerpoint::Provider> CreateProvider();

}  // namespace tessarine::builtin
