#include "office/builtin/package/ContentTypes.h"

#include <algorithm>
#include <unordered_set>

#include "office/builtin/package/PartName.h"
#include "office/builtin/xml/EditedPart.h"
#include "office/builtin/xml/RootElement.h"
#include "office/builtin/xml/XmlDocument.h"
#include "office/builtin/xml/XmlText.h"
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
    // Types are compared without regard to case (RFC 2045, 5.1), as part names are.
    return ComparableName(type);
}

/// Whether a type as written is this one, without making the form in which they are compared.
bool IsType(std::string_view written, std::string_view type)
{
    written = written.substr(0, written.find(';'));
    while (written.ends_with(' '))
        written.remove_suffix(1);
    return PartNameEqual()(written, type);
}

}  // namespace

void ContentTypes::Read() const
{
    const XmlDocument document(bytes_, entryName, limits_);
    const auto keep = [&](std::string_view text) {
        // A value with references was decoded into the document's memory, which ends with the document.
        const bool isInBytes = text.data() >= bytes_.data() && text.data() < bytes_.data() + bytes_.size();
        return isInBytes ? text : std::string_view(texts_.emplace_back(text));
    };
    for (const Node element : document.Root().ChildElements()) {
        const bool isOverride = document.Is(element, Ns::ContentTypes, "Override");
        if (!isOverride && !document.Is(element, Ns::ContentTypes, "Default"))
            continue;
        Type entry;
        document.ForEachAttribute(element, [&](std::string_view name, std::string_view value) {
            if (name == (isOverride ? "PartName" : "Extension"))
                entry.name = keep(value);
            else if (name == "ContentType")
                entry.type = keep(value);
        });
        (isOverride ? overrides_ : defaults_).push_back(entry);
        // The first of a name counts.
        (isOverride ? overrideOf_ : defaultOf_).emplace(entry.name, entry.type);
    }
    isRead_ = true;
}

std::string ContentTypes::TypeOf(std::string_view partName) const
{
    if (!isRead_)
        Read();
    // An override wins over its extension's default (ECMA-376 part 2, 10.1.2).
    if (const auto found = overrideOf_.find(partName); found != overrideOf_.end())
        return PlainType(found->second);
    return DefaultOf(ExtensionOf(partName));
}

std::vector<std::string_view> ContentTypes::PartsOfType(std::string_view type) const
{
    if (!isRead_)
        Read();
    std::vector<std::string_view> names;
    for (const Type& entry : overrides_)
        if (IsType(entry.type, type))
            names.push_back(entry.name);
    return names;
}

const std::vector<ContentTypes::Type>& ContentTypes::Overrides() const
{
    if (!isRead_)
        Read();
    return overrides_;
}

std::string ContentTypes::DefaultOf(std::string_view extension) const
{
    if (!isRead_)
        Read();
    const auto found = defaultOf_.find(extension);
    return found == defaultOf_.end() ? std::string() : PlainType(found->second);
}

bool ContentTypes::HasDefaultOf(std::string_view type) const
{
    if (!isRead_)
        Read();
    return std::ranges::any_of(defaults_, [type](const Type& entry) { return PlainType(entry.type) == type; });
}

void ContentTypes::AddOverride(std::string_view partName, std::string_view type)
{
    added_ += "<" + std::string(RootElement(bytes_).Prefix()) + "Override PartName=\"/" +
              EscapeAttribute(FromUtf8(partName)) + "\" ContentType=\"" + std::string(type) + "\"/>";
}

void ContentTypes::RemoveOverrides(const std::vector<std::string_view>& partNames)
{
    const std::unordered_set<std::string_view, PartNameHash, PartNameEqual> gone(partNames.begin(), partNames.end());
    const XmlDocument document(bytes_, entryName, limits_);
    for (const Node element : document.Root().ChildElements())
        if (document.Is(element, Ns::ContentTypes, "Override") &&
            gone.contains(document.Attribute(element, "PartName")))
            removals_.push_back({document.OffsetOf(element), document.RangeOf(element).end, {}});
}

std::string ContentTypes::Bytes() const
{
    std::vector<ByteEdit> edits = removals_;
    if (!added_.empty())
        edits.push_back(AppendToRoot(bytes_, added_));
    return EditedPart(XmlDocument(bytes_, entryName, limits_), std::move(edits), entryName, limits_).Bytes();
}

}  // namespace tessarine::builtin
