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

std::string PlainType(std::string_view type)
{
    type = type.substr(0, type.find(';'));
    while (type.ends_with(' '))
        type.remove_suffix(1);
    return ComparableName(type);  // types, too, are compared without regard to case
}

}  // namespace

ContentTypes::ContentTypes(std::string bytes, const Limits& limits) : bytes_(std::move(bytes))
{
    const XmlDocument document(bytes_, "[Content_Types].xml", limits);
    for (const Node element : document.Root().ChildElements()) {
        if (document.Is(element, Ns::ContentTypes, "Override"))
            overrides_[ComparableName(document.Attribute(element, "PartName"))] = {
                PlainType(document.Attribute(element, "ContentType")), document.OffsetOf(element)};
        else if (document.Is(element, Ns::ContentTypes, "Default"))
            defaults_[ComparableName(document.Attribute(element, "Extension"))] =
                PlainType(document.Attribute(element, "ContentType"));
    }
}

std::string_view ContentTypes::TypeOf(std::string_view partName) const
{
    const std::string name = ComparableName(partName);
    if (const auto found = overrides_.find(name); found != overrides_.end())
        return found->second.type;
    const std::size_t dot = name.rfind('.');
    const auto found = dot == std::string::npos ? defaults_.end() : defaults_.find(name.substr(dot + 1));
    return found == defaults_.end() ? std::string_view() : std::string_view(found->second);
}

void ContentTypes::AddOverride(std::string_view partName, std::string_view type)
{
    const ElementRange root = ScanElement(bytes_, NextChild(bytes_, 0, bytes_.size()));
    const std::string element = "<" + std::string(root.Prefix()) + "Override PartName=\"/" +
                                EscapeAttribute(FromUtf8(partName)) + "\" ContentType=\"" + std::string(type) + "\"/>";
    edits_.push_back({root.contentEnd, root.contentEnd, element});
}

void ContentTypes::RemoveOverride(std::string_view partName)
{
    const auto found = overrides_.find(ComparableName(partName));
    if (found == overrides_.end())
        return;
    edits_.push_back({found->second.offset, ScanElement(bytes_, found->second.offset).end, {}});
    overrides_.erase(found);
}

}  // namespace tessarine::builtin
