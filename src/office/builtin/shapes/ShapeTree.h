#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "office/builtin/limits/Limits.h"
#include "office/builtin/text/TextBody.h"

namespace tessarine::builtin
{

class XmlDocument;

/// The placeholders that something depends on (ECMA-376 19.7.10).
enum class Placeholder : std::uint8_t { None, Header, Footer, SlideImage, Other };

/// One element of Shapes. Indices are into ShapeTree::bodies, -1 for none.
struct ShapeRecord {
    std::int32_t type = 0;  ///< MsoShapeType
    Placeholder placeholder = Placeholder::None;
    bool hasTextFrame = false;
    std::int32_t body = -1;  ///< -1 with a text frame: an empty text, nothing to edit.
    std::int32_t twin = -1;  ///< The same text in the branch of alternate content that was not chosen; changed alike.
    std::string linkId;      ///< Relationship of a linked OLE object.
    std::vector<std::size_t>
        linkElements;  ///< Offsets of the `p:oleObj` elements that name it: one, or one per branch.
};

/// One element of Hyperlinks: the link elements that a person sees as one.
struct LinkRecord {
    std::string relationshipId;
    std::string action;
    std::string invalidUrl;
    std::string tooltip;
    std::vector<std::size_t> elements;  ///< Offsets of the "<" of each a:hlinkClick, a:hlinkHover or a:hlinkMouseOver.
};

/// What the engine keeps of a part with a shape tree (slide, notes page, master, layout): its shapes with their texts,
/// its hyperlinks, and what a master or layout says of itself. Small beside the markup, which is not kept.
struct ShapeTree {
    std::vector<ShapeRecord> shapes;
    std::vector<TextBody> bodies;
    std::vector<LinkRecord> links;
    std::string layoutType;              ///< p:sldLayout@type
    std::vector<std::string> layoutIds;  ///< p:sldLayoutId@r:id of a master, in order.
};

/// Reads the shape tree of a parsed part. Raises -2147023504 for a part without a shape tree and for groups nested
/// beyond the limit.
ShapeTree ReadShapeTree(const XmlDocument& document, std::string_view part, const Limits& limits);

}  // namespace tessarine::builtin
