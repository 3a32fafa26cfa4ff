#include "support/PartWriter.h"

#include <algorithm>
#include <utility>

namespace tessarine::test
{
namespace
{

std::string EscapeOfOffice(char16_t unit)
{
    static constexpr std::string_view digits = "0123456789ABCDEF";
    return {'_', 'x', '0', '0', digits[(unit >> 4) & 0xF], digits[unit & 0xF], '_'};
}

void ReplaceAll(std::string& text, std::string_view from, std::string_view to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

std::string FolderWithSlash(const std::string& part)
{
    const std::size_t slash = part.rfind('/');
    return slash == std::string::npos ? std::string() : part.substr(0, slash + 1);
}

}  // namespace

std::string XmlText(StringView text)
{
    std::string xml = ToUtf8(text);
    ReplaceAll(xml, "&", "&amp;");
    ReplaceAll(xml, "<", "&lt;");
    ReplaceAll(xml, ">", "&gt;");
    for (char16_t unit = 0; unit < 0x20; ++unit) {
        if (unit != u'\t' && unit != u'\n')
            ReplaceAll(xml, std::string(1, static_cast<char>(unit)), EscapeOfOffice(unit));
    }
    return xml;
}

std::string XmlAttribute(StringView text)
{
    std::string xml = XmlText(text);
    ReplaceAll(xml, "\"", "&quot;");
    ReplaceAll(xml, "\t", "&#9;");
    ReplaceAll(xml, "\n", "&#10;");
    return xml;
}

std::string XmlDeclaration()
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n";
}

std::string RootNamespaces()
{
    return std::string(" xmlns:a=\"")
        .append(Uri::Drawing)
        .append("\" xmlns:r=\"")
        .append(Uri::Relationships)
        .append("\" xmlns:p=\"")
        .append(Uri::Presentation)
        .append("\"");
}

std::string RelationshipsPartOf(const std::string& part)
{
    const std::string folder = FolderWithSlash(part);
    return folder + "_rels/" + part.substr(folder.size()) + ".rels";
}

std::string RelativeTarget(const std::string& fromPart, const std::string& toPart)
{
    std::string folder = FolderWithSlash(fromPart);
    std::string up;
    while (!toPart.starts_with(folder)) {
        folder = FolderWithSlash(folder.substr(0, folder.size() - 1));
        up += "../";
    }
    return up + toPart.substr(folder.size());
}

void PackageParts::Reserve(const std::string& name)
{
    if (std::ranges::find(parts_, name, &Part::name) == parts_.end())
        parts_.push_back({name, {}, false});
}

void PackageParts::DropEmptyPlaces()
{
    std::erase_if(parts_, [](const Part& part) { return !part.written; });
}

void PackageParts::Put(const std::string& name, std::string bytes, const std::string& contentType)
{
    Reserve(name);
    *std::ranges::find(parts_, name, &Part::name) = {name, std::move(bytes), true};
    if (!contentType.empty())
        overrides_.emplace_back(name, contentType);
}

std::string PackageParts::ContentTypes() const
{
    std::string xml =
        XmlDeclaration() + "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">";
    for (const auto& [extension, type] : defaults_)
        xml += "<Default Extension=\"" + extension + "\" ContentType=\"" + type + "\"/>";
    for (const auto& [name, type] : overrides_)
        xml += "<Override PartName=\"/" + name + "\" ContentType=\"" + type + "\"/>";
    return xml + "</Types>";
}

PartWriter::PartWriter(PackageParts& parts, std::string name) : parts_(parts), name_(std::move(name))
{
    if (!name_.empty())
        parts_.Reserve(name_);
    parts_.Reserve(RelationshipsPartOf(name_));
}

std::string PartWriter::NextId() const
{
    for (std::size_t number = relationships_.size() + 1;; ++number) {
        std::string id = "rId" + std::to_string(number);
        if (std::ranges::find(relationships_, id, &Relationship::id) == relationships_.end())
            return id;
    }
}

std::string PartWriter::Relate(std::string_view type, const std::string& targetPart)
{
    return RelateTo(type, FromUtf8(RelativeTarget(name_, targetPart)), false);
}

std::string PartWriter::RelateTo(std::string_view type, StringView target, bool external)
{
    std::string id = NextId();
    RelateAs(id, type, target, external);
    return id;
}

std::string PartWriter::RelateShared(std::string_view type, StringView target)
{
    const auto known = std::ranges::find(relationships_, target, &Relationship::target);
    return known != relationships_.end() ? known->id : RelateTo(type, target);
}

void PartWriter::RelateAs(const std::string& id, std::string_view type, StringView target, bool external)
{
    const bool isWhole = type.find(':') != std::string_view::npos;
    const std::string base = isWhole ? "" : std::string(Uri::Relationships) + "/";
    relationships_.push_back({id, base + std::string(type), String(target), external});
}

void PartWriter::Finish(std::string bytes, const std::string& contentType)
{
    if (!name_.empty())
        parts_.Put(name_, std::move(bytes), contentType);
    if (relationships_.empty())
        return;
    std::string xml =
        XmlDeclaration().append("<Relationships xmlns=\"").append(Uri::PackageRelationships).append("\">");
    for (const Relationship& relationship : relationships_) {
        xml += "<Relationship Id=\"" + relationship.id + "\" Type=\"" + relationship.type + "\" Target=\"" +
               XmlAttribute(relationship.target) + "\"" + (relationship.external ? " TargetMode=\"External\"" : "") +
               "/>";
    }
    parts_.Put(RelationshipsPartOf(name_), xml + "</Relationships>");
}

}  // namespace tessarine::test
