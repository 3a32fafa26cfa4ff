#pragma once

#include <cstddef>
#include <string_view>

#include "platform/String.h"

namespace tessarine::builtin
{

/// Appends all texts among the records between two offsets, however deeply they are nested, for a filter (PartFilter):
/// case folded (FoldCaseWidely), without control characters, and with a line feed behind each, which no text that is
/// looked for holds. Raises `FileCorrupt` for a record that doesn't fit into what holds it.
void AppendGatheredTexts(std::string_view bytes, std::size_t begin, std::size_t end, String& gathered);

}  // namespace tessarine::builtin
