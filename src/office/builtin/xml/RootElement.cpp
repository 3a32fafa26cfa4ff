#include "office/builtin/xml/RootElement.h"

namespace tessarine::builtin
{

ElementRange RootElement(std::string_view xml)
{
    // NextChild passes over the declaration and comments in front of the root.
    return ScanElement(xml, NextChild(xml, 0, xml.size()));
}

ByteEdit AppendToRoot(std::string_view xml, std::string elements)
{
    const ElementRange root = RootElement(xml);
    if (!root.IsEmptyTag())
        return {root.contentEnd, root.contentEnd, std::move(elements)};
    constexpr std::size_t slashAndBracket = 2;
    return {root.end - slashAndBracket, root.end, ">" + elements + "</" + std::string(root.name) + ">"};
}

}  // namespace tessarine::builtin
