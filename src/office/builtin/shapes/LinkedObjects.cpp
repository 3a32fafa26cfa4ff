#include "office/builtin/shapes/LinkedObjects.h"

#include <utility>

#include "office/builtin/shapes/HyperlinkAddress.h"
#include "office/builtin/xml/StartTag.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

std::string_view TargetOf(ShapeTreeEdits& edits, const ShapeRecord& shape)
{
    const Relationship* relationship = edits.Links().Find(shape.linkId);
    if (relationship == nullptr)
        throw Failure(FailureNumber::InvalidRequest, u"A linked object names no source");
    return relationship->target;
}

}  // namespace

String LinkSourceOf(ShapeTreeEdits& edits, const ShapeRecord& shape)
{
    return ReadTarget(TargetOf(edits, shape), false).address;
}

void PutLinkSource(ShapeTreeEdits& edits, RelationshipUses& uses, ShapeRecord& shape, const String& source)
{
    if (source == LinkSourceOf(edits, shape))
        return;
    // The object stands once or, with a branch for older readers, twice in the part.
    std::string id =
        uses.PutTarget(shape.linkId, shape.linkElements.size(), WriteTarget(TargetOf(edits, shape), source, false));
    // The relationship itself was led elsewhere: the markup stays as it is.
    if (id == shape.linkId)
        return;
    const XmlDocument& document = edits.Document();
    for (const std::size_t element : shape.linkElements) {
        const std::string_view idName =
            document.AttributeName(document.ElementAt(element), Ns::DocumentRelationships, "id");
        edits.ChangeTag(element, [&](std::string& tag) { PutAttribute(tag, idName, id); });
    }
    shape.linkId = std::move(id);
}

}  // namespace tessarine::builtin
