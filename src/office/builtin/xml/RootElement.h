#pragma once

#include <string>
#include <string_view>

#include "office/builtin/xml/XmlEdits.h"
#include "office/builtin/xml/XmlScanner.h"

namespace tessarine::builtin
{

/// The bytes of a part's root element; declaration, comments and instructions in front of it are passed over. Raises
/// `FileCorrupt` when there is none.
ElementRange RootElement(std::string_view xml);

/// The edit that puts elements (as markup) after the last child of the root. A root written as an empty-element tag
/// gets an end tag. One such edit per part: two of them would both open the same tag. Raises as RootElement does.
ByteEdit AppendToRoot(std::string_view xml, std::string elements);

}  // namespace tessarine::builtin
