#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "office/builtin/limits/Limits.h"
#include "office/builtin/text/LinkElement.h"
#include "office/builtin/text/TextBody.h"

namespace tessarine::builtin
{

/// The placeholders that something depends on (ECMA-376 19.7.10).
enum class Placeholder : std::uint8_t { None, Title, Header, Footer, SlideImage, Other };

/// One element of Shapes. Indices are into ShapeTree::bodies.
struct ShapeRecord {
    std::int32_t type = 0;   ///< MsoShapeType
    std::size_t offset = 0;  ///< Of its element in the part.
    Placeholder placeholder = Placeholder::None;
    bool hasTextFrame = false;
    std::optional<std::size_t> body;  ///< None with a text frame: an empty text, nothing to edit.
    std::optional<std::size_t> twin;  ///< The same text in the branch of alternate content that was not chosen.
    /// Another branch of alternate content has a text of its own, which edits of this shape leave as it is.
    bool hasOtherText = false;
    /// Numbers of edits of the two texts after which they were known to be the same; both 0 when they were read.
    std::pair<std::size_t, std::size_t> alike{};
    std::string linkId;  ///< Relationship of a linked OLE object.

    /// Offsets of the `p:oleObj` elements that name that relationship: one, or one per branch.
    std::vector<std::size_t> linkElements;
};

/// What the engine keeps of a part with a shape tree (slide, notes page, master, layout): its shapes with their texts,
/// its hyperlinks, and what a master or layout says of itself. Small beside the markup, which is not kept.
struct ShapeTree {
    std::vector<ShapeRecord> shapes;     ///< From back to front; a group is one.
    std::vector<std::string> names;      ///< Of the shapes, UTF-8; none unless they were to be kept.
    std::vector<TextBody> bodies;        ///< Of shapes, and their twins.
    std::vector<LinkRecord> links;       ///< In document order, also those in groups and tables.
    std::string layoutType;              ///< p:sldLayout@type
    std::vector<std::string> layoutIds;  ///< p:sldLayoutId@r:id of a master, in order.
};

std::size_t KeptBytesOf(const ShapeTree& tree);  ///< About what it takes of memory.
std::size_t KeptBytesOf(const std::vector<LinkRecord>& links);

/// Whether the records get the names of their shapes, which most runs have no use for.
enum class ShapeNames { Kept, LeftOut };

/// Reads the shape tree of a parsed part. Raises `FileCorrupt` for a part without a shape tree and for groups nested
/// beyond the limit.
ShapeTree ReadShapeTree(const XmlDocument& document, std::string_view part, const Limits& limits,
                        ShapeNames names = ShapeNames::LeftOut);

/// What a person calls a shape: `p:cNvPr@name` of its element.
std::string_view ShapeNameIn(const XmlDocument& document, Node shape);

}  // namespace tessarine::builtin
