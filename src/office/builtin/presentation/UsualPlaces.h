#pragma once

#include <string_view>

namespace tessarine::builtin
{

/// Whether a part stands where parts of its content type stand in nearly every presentation, so that its type is to be
/// believed. One that stands elsewhere, or has no type, may be anything. `type` is as the file writes it, or in lower
/// case.
///
/// Pages are left out: which slides and masters there are is told by lists, not by names.
bool IsInUsualPlace(std::string_view name, std::string_view type);

}  // namespace tessarine::builtin
