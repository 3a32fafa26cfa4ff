#pragma once

#include <string_view>
#include <vector>

#include "office/builtin/shapes/ShapeTree.h"
#include "office/builtin/xml/XmlDocument.h"

namespace tessarine::builtin
{

/// The link elements of a shape tree joined to links, in document order: for each shape from back to front, groups and
/// tables entered, its click, its hover, then the links of its text from front to back. `bodies` are the texts that
/// were read of the same document. A link names its element by a number within the body or, where none of these bodies
/// is around it (shapes, cells of tables), by its offset. Raises `FileCorrupt` for groups nested beyond the limit.
std::vector<LinkRecord> ReadHyperlinks(const XmlDocument& document, Node shapeTree, const std::vector<TextBody>& bodies,
                                       std::string_view part, const Limits& limits);

}  // namespace tessarine::builtin
