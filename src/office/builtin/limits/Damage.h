#pragma once

#include <cstdint>
#include <string_view>

#include "platform/Failure.h"

namespace tessarine::builtin
{

/// The failure for a damaged package or part: `FileCorrupt`, "The file is damaged: part: what (at byte offset)". The
/// text names the entry, since it lands in logs and reports. Without a part ("") it speaks of the file.
Failure Damage(std::string_view part, std::string_view what);
/// The offset is one in the zip file or, for what is wrong in a part's XML, in the part.
Failure Damage(std::string_view part, std::string_view what, std::uint64_t byteOffset);

/// The failure for a change that the engine can't make without harm: `FileCorrupt`, since a saved file would be. The
/// text says that nothing was saved.
Failure FailedEdit(std::string_view part, std::string_view what);

/// The failure for a file that is something else than a presentation: `BadFormat`, with `what` as its whole text, since
/// such a file need not be damaged.
Failure NotAPresentation(std::string_view what);

}  // namespace tessarine::builtin
