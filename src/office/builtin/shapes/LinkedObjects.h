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

/// Leads the object to another source; putting the one that is there is no edit. Where others use the relationship, the
/// object gets one of its own, and the record says which. Raises as LinkSourceOf and WriteTarget do.
void PutLinkSource(ShapeTreeEdits& edits, RelationshipUses& uses, ShapeRecord& shape, const String& source);

}  // namespace tessarine::builtin
