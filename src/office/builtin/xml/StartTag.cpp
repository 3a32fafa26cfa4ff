#include "office/builtin/xml/StartTag.h"

#include "office/builtin/xml/XmlScanner.h"
#include "office/builtin/xml/XmlText.h"

namespace tessarine::builtin
{

void PutAttribute(std::string& tag, std::string_view qualifiedName, std::string_view value)
{
    const AttributeRange range = FindAttribute(tag, 0, qualifiedName);
    const std::string escaped = EscapeAttribute(FromUtf8(value));
    if (range.found && value.empty())
        // White space stands in front of every attribute (XML 1.0 3.1), so there is a character to take.
        tag.erase(range.begin - 1, range.valueEnd + 1 - (range.begin - 1));
    else if (range.found)
        tag.replace(range.valueBegin, range.valueEnd - range.valueBegin, escaped);
    else if (!value.empty())
        InsertAttributes(tag, " " + std::string(qualifiedName) + "=\"" + escaped + "\"");
}

void InsertAttributes(std::string& tag, std::string_view attributes)
{
    tag.insert(1 + ElementName(tag).size(), attributes);
}

}  // namespace tessarine::builtin
