#pragma once

#include <cstddef>

#include "office/builtin/shapes/RelationshipUses.h"
#include "office/builtin/shapes/ShapeTreeEdits.h"
#include "platform/String.h"

/// The sources of linked OLE objects (LinkFormat of PowerPoint's object model).
namespace tessarine::builtin
{

/// Path or address of the source with the item in it: "C:\a.xlsx!Sheet1!R1C1". Raises `InvalidRequest` for a shape that
/// is no linked object.
String LinkSourceOf(ShapeTreeEdits& edits, const ShapeRecord& shape);

/// Raises as LinkSourceOf and WriteTarget do.
void PutLinkSource(ShapeTreeEdits& edits, RelationshipUses& uses, ShapeRecord& shape, const String& source);

}  // namespace tessarine::builtin
