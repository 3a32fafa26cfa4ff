#pragma once

#include <string_view>
#include <vector>

#include "office/builtin/shapes/ShapeTree.h"
#include "office/builtin/xml/XmlDocument.h"

namespace tessarine::builtin
{

/// The hyperlinks of a shape tree, in document order: for each shape from back to front, groups and tables entered, its
/// click, its hover, then the links of its text from front to back. Neighbouring runs with the same target are one
/// link, also across a line break.
std::vector<LinkRecord> ReadLinks(const XmlDocument& document, Node shapeTree, std::string_view part,
                                  const Limits& limits);

}  // namespace tessarine::builtin
