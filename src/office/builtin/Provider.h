#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "saving/SaveTerms.h"

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
///
/// `Presentation::Save` raises what ReplacementFile does: among others `SharingViolation` for a file that others have
/// changed since it was opened, and `AccessDenied` for one whose attributes can't be kept. `terms` say when a file is
/// written in place instead.
std::shared_ptr<powerpoint::Provider> CreateProvider(const SaveTerms& terms = {});

}  // namespace tessarine::builtin
