#include "office/builtin/ContentTypes.h"

#include "office/builtin/PartName.h"
#include "office/builtin/XmlDocument.h"
#include "office/builtin/XmlScanner.h"
#include "office/builtin/XmlText.h"
#include "platform/String.h"

namespace tessarine::builtin
{

namespace
{

constexpr std::string_view contentTypesName = "[Content_Types].xml";

std::string PlainType(std::string_view type)
{
    type = type.substr(0, type.find(';'));
    while (type.ends_with(' '))
        type.remove_suffix(1);
    return ComparableName(type);  // types, too, are compared without regard to case
}

}  // namespace

std::string ContentTypes::TypeOf(std::string_view partName) const
{
    const PartNameEqual equal;
    const std::size_t dot = partName.rfind('.');
    const std::string_view extension = dot == std::string_view::npos ? std::string_view() : partName.substr(dot + 1);
    const XmlDocument document(bytes_, contentTypesName, limits_);
    std::string_view byExtension;
    for (const Node element : document.Root().ChildElements()) {
        const bool isOverride = element.Name().ends_with("Override");
        if (isOverride && equal(document.Attribute(element, "PartName"), partName) &&
            document.Is(element, Ns::ContentTypes, "Override"))
            return PlainType(document.Attribute(element, "ContentType"));
        if (!isOverride && equal(document.Attribute(element, "Extension"), extension) &&
            document.Is(element, Ns::ContentTypes, "Default"))
            byExtension = document.Attribute(element, "ContentType");
    }
    return PlainType(byExtension);
}

void ContentTypes::AddOverride(std::string_view partName, std::string_view type)
{
    ElementRange root = ScanElement(bytes_, NextChild(bytes_, 0, bytes_.size()));
    if (root.IsEmptyTag()) {
        bytes_.replace(root.end - 2, 2, "></" + std::string(root.name) + ">");
        root = ScanElement(bytes_, root.begin);
    }
    const std::string element = "<" + std::string(root.Prefix()) + "Override PartName=\"/" +
                                EscapeAttribute(FromUtf8(partName)) + "\" ContentType=\"" + std::string(type) + "\"/>";
    edits_.push_back({root.contentEnd, root.contentEnd, element});
}

void ContentTypes::RemoveOverride(std::string_view partName)
{
    const PartNameEqual equal;
    const XmlDocument document(bytes_, contentTypesName, limits_);
    for (const Node element : document.Root().ChildElements())
        if (document.Is(element, Ns::ContentTypes, "Override") &&
            equal(document.Attribute(element, "PartName"), partName))
            edits_.push_back({document.OffsetOf(element), ScanElement(bytes_, document.OffsetOf(element)).end, {}});
}

}  // namespace tessarine::builtin
