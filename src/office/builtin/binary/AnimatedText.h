#pragma once

#include <cstdint>
#include <map>
#include <string_view>

#include "office/builtin/binary/TextEdits.h"
#include "office/builtin/records/Record.h"
#include "office/builtin/records/RecordEdits.h"

namespace tessarine::builtin
{

/// The edits of shapes' texts, by the shapes' numbers.
using EditedShapes = std::map<std::uint32_t, const TextEdits*>;

/// Moves the ranges of texts that animations of their page name (VisualShapeAtom, [MS-PPT] 2.8.44, in the tags of
/// PowerPoint 2002) along with the edits. Tags that can't be read stay as they are.
void MoveAnimatedRanges(std::string_view bytes, const Record& page, const EditedShapes& shapes, RecordEdits& target);

}  // namespace tessarine::builtin
