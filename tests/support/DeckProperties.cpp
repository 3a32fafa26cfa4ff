#include "support/DeckProperties.h"

namespace tessarine::test
{
namespace
{

constexpr int FirstCustomId = 2;  // 0 and 1 are reserved

std::string PropertyElement(const std::string& name, const std::string& attributes, StringView value)
{
    return "<" + name + attributes + ">" + XmlText(value) + "</" + name + ">";
}

}  // namespace

void DeckProperties::Custom(String name, const std::string& kind, StringView value, const String& linkTarget)
{
    const bool isMark = kind == "empty" || kind == "null";
    CustomXml(std::move(name), isMark ? "<vt:" + kind + "/>" : PropertyElement("vt:" + kind, "", value), linkTarget);
}

void DeckProperties::CustomXml(String name, std::string valueXml, String linkTarget)
{
    custom_.push_back({std::move(name), std::move(valueXml), std::move(linkTarget)});
}

void DeckProperties::Write(PackageParts& package, PartWriter& root) const
{
    const std::string variantTypes =
        " xmlns:vt=\"http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes\"";
    const std::string properties = "http://schemas.openxmlformats.org/officeDocument/2006/";
    const std::string contentType = "application/vnd.openxmlformats-officedocument.";

    if (!core_.empty()) {
        std::string xml =
            XmlDeclaration() +
            "<cp:coreProperties xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/"
            "core-properties\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmlns:dcterms=\"http://purl.org/dc/"
            "terms/\" xmlns:dcmitype=\"http://purl.org/dc/dcmitype/\" "
            "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">";
        for (const auto& [element, value] : core_)
            xml +=
                PropertyElement(element, element.starts_with("dcterms:") ? " xsi:type=\"dcterms:W3CDTF\"" : "", value);
        package.Put("docProps/core.xml", xml + "</cp:coreProperties>",
                    "application/vnd.openxmlformats-package.core-properties+xml");
        root.Relate("http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties",
                    "docProps/core.xml");
    }
    if (!app_.empty()) {
        std::string xml =
            XmlDeclaration() + "<Properties xmlns=\"" + properties + "extended-properties\"" + variantTypes + ">";
        for (const auto& [element, value] : app_)
            xml += PropertyElement(element, "", value);
        package.Put("docProps/app.xml", xml + "</Properties>", contentType + "extended-properties+xml");
        root.Relate("extended-properties", "docProps/app.xml");
    }
    if (!custom_.empty()) {
        std::string xml =
            XmlDeclaration() + "<Properties xmlns=\"" + properties + "custom-properties\"" + variantTypes + ">";
        int id = FirstCustomId;
        for (const CustomProperty& property : custom_) {
            xml += "<property fmtid=\"{D5CDD505-2E9C-101B-9397-08002B2CF9AE}\" pid=\"" + std::to_string(id++) +
                   "\" name=\"" + XmlAttribute(property.name) + "\"";
            if (!property.linkTarget.empty())
                xml += " linkTarget=\"" + XmlAttribute(property.linkTarget) + "\"";
            xml += ">" + property.valueXml + "</property>";
        }
        package.Put("docProps/custom.xml", xml + "</Properties>", contentType + "custom-properties+xml");
        root.Relate("custom-properties", "docProps/custom.xml");
    }
}

}  // namespace tessarine::test
