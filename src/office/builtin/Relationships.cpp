#include "office/builtin/Relationships.h"

#include <algorithm>

#include "office/builtin/Damage.h"
#include "office/builtin/XmlDocument.h"
#include "office/builtin/XmlScanner.h"
#include "office/builtin/XmlText.h"
#include "platform/String.h"

namespace tessarine::builtin
{

namespace
{

constexpr std::string_view emptyPart =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"></Relationships>";

std::string_view KindOf(std::string_view type)
{
    const std::string_view kind = type.substr(type.rfind('/') + 1);
    // Strict writes these two as one word.
    if (kind == "extendedProperties")
        return "extended-properties";
    if (kind == "customProperties")
        return "custom-properties";
    return kind;
}

std::string ElementOf(const Relationship& relationship, std::string_view prefix)
{
    std::string element = "<";
    element.append(prefix).append("Relationship Id=\"").append(relationship.id);
    element.append("\" Type=\"").append(EscapeAttribute(FromUtf8(relationship.type)));
    element.append("\" Target=\"").append(EscapeAttribute(FromUtf8(relationship.target)));
    return element.append(relationship.external ? "\" TargetMode=\"External\"/>" : "\"/>");
}

}  // namespace

bool Relationship::Is(std::string_view kind) const
{
    return !removed && KindOf(type) == kind;
}

Relationships::Relationships(std::string bytes, std::string_view part, const Limits& limits) : bytes_(std::move(bytes))
{
    const XmlDocument document(bytes_, part, limits);
    for (const Node element : document.Root().ChildElements()) {
        if (!document.Is(element, Ns::PackageRelationships, "Relationship"))
            continue;
        Relationship relationship;
        document.ForEachAttribute(element, [&](std::string_view name, std::string_view value) {
            if (name == "Id")
                relationship.id = value;
            else if (name == "Type")
                relationship.type = value;
            else if (name == "Target")
                relationship.target = value;
            else if (name == "TargetMode")
                relationship.external = value == "External";
        });
        relationship.offset = document.OffsetOf(element);
        byId_.emplace(relationship.id, relationships_.size());
        relationships_.push_back(std::move(relationship));
    }
    parsed_ = relationships_.size();
    retargeted_.resize(parsed_);
}

const Relationship* Relationships::Find(std::string_view id) const
{
    const auto found = byId_.find(std::string(id));
    if (found == byId_.end() || relationships_[found->second].removed)
        return nullptr;
    return &relationships_[found->second];
}

const Relationship* Relationships::FirstOf(std::string_view kind) const
{
    const auto found = std::ranges::find_if(relationships_, [&](const Relationship& r) { return r.Is(kind); });
    return found == relationships_.end() ? nullptr : &*found;
}

void Relationships::PutTarget(std::string_view id, std::string target)
{
    const std::size_t index = byId_.at(std::string(id));
    relationships_[index].target = std::move(target);
    retargeted_[index] = true;
    edited_ = true;
}

std::string Relationships::NewId() const
{
    std::size_t largest = 0;
    for (const Relationship& relationship : relationships_) {
        const std::string_view id = relationship.id;
        if (!id.starts_with("rId") || id.size() > 12 || id.find_first_not_of("0123456789", 3) != std::string_view::npos)
            continue;
        std::size_t number = 0;
        for (const char digit : id.substr(3))
            number = number * 10 + static_cast<std::size_t>(digit - '0');
        largest = std::max(largest, number);
    }
    std::string id;
    do
        id = "rId" + std::to_string(++largest);
    while (byId_.contains(id));  // one with more digits than were looked at
    return id;
}

std::string Relationships::AddLike(std::string_view id, std::string target)
{
    const std::string newId = Add(relationships_[byId_.at(std::string(id))].type, std::move(target));
    relationships_.back().external = true;
    return newId;
}

std::string Relationships::Add(std::string_view type, std::string target)
{
    Relationship relationship;
    relationship.id = NewId();
    relationship.type = type;
    relationship.target = std::move(target);
    byId_.emplace(relationship.id, relationships_.size());
    relationships_.push_back(relationship);
    retargeted_.push_back(false);
    edited_ = true;
    return relationship.id;
}

void Relationships::Remove(std::string_view id)
{
    relationships_[byId_.at(std::string(id))].removed = true;
    edited_ = true;
}

std::string Relationships::Bytes() const
{
    const std::string_view bytes = bytes_.empty() ? emptyPart : std::string_view(bytes_);
    std::vector<ByteEdit> edits;
    for (std::size_t i = 0; i < parsed_; ++i) {
        const Relationship& relationship = relationships_[i];
        if (relationship.removed) {
            edits.push_back({relationship.offset, ScanElement(bytes, relationship.offset).end, {}});
        } else if (retargeted_[i]) {
            const AttributeRange target = FindAttribute(bytes, relationship.offset, "Target");
            if (!target.found)
                throw Damage({}, "a relationship has no target", relationship.offset);
            edits.push_back({target.valueBegin, target.valueEnd, EscapeAttribute(FromUtf8(relationship.target))});
        }
    }

    const ElementRange root = ScanElement(bytes, NextChild(bytes, 0, bytes.size()));
    std::string added;
    for (std::size_t i = parsed_; i < relationships_.size(); ++i)
        if (!relationships_[i].removed)
            added += ElementOf(relationships_[i], root.Prefix());
    if (!added.empty() && root.IsEmptyTag())
        edits.push_back({root.end - 2, root.end, ">" + added + "</" + std::string(root.name) + ">"});
    else if (!added.empty())
        edits.push_back({root.contentEnd, root.contentEnd, added});
    return ApplyEdits(bytes, std::move(edits));
}

}  // namespace tessarine::builtin
