#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

#include "office/builtin/shapes/ShapeTree.h"
#include "office/builtin/xml/XmlDocument.h"

namespace tessarine::builtin
{

/// The relationships that a slide's list of controls (ECMA-376 19.3.2.2 `p:controls`) names. Read when first asked.
class ControlIds
{
public:
    bool Name(const XmlDocument& document, std::string_view id);  ///< Whether this one is among them.

private:
    void Read(const XmlDocument& document, Node controls);

    std::optional<std::unordered_set<std::string>> ids_;
};

/// Fills type, placeholder, hasTextFrame, linkId and linkElements of a shape's record from its element (a child of
/// `p:spTree`), the way PowerPoint's object model tells them. False, and the record stays, for an element that is no
/// shape.
bool ClassifyShape(const XmlDocument& document, Node element, ControlIds& controls, ShapeRecord& record);
bool IsShape(const XmlDocument& document, Node element);  ///< The same question alone.

/// The branch of `mc:AlternateContent` that applies: the first choice whose required namespaces are all understood,
/// else the fallback, else an empty node (ECMA-376 part 3, 9.3).
Node ChosenBranch(const XmlDocument& document, Node alternateContent);

/// `p:cNvPr` of a shape element, and `p:nvPr` beside it; empty nodes when absent.
struct NonVisual {
    Node drawing;      ///< `p:cNvPr`: id, name, the links of the shape itself.
    Node application;  ///< `p:nvPr`: placeholder, media.
};
/// Those of a shape, picture, connector, group or graphic frame alike.
NonVisual NonVisualOf(const XmlDocument& document, Node shape);

}  // namespace tessarine::builtin
