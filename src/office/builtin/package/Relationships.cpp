#include "office/builtin/package/Relationships.h"

#include <algorithm>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/xml/RootElement.h"
#include "office/builtin/xml/XmlCharacters.h"
#include "office/builtin/xml/XmlDocument.h"
#include "office/builtin/xml/XmlScanner.h"
#include "office/builtin/xml/XmlText.h"
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

/// A relationship part as nearly all programs write it: one element after the other under the usual names, attributes
/// without references. Every slide has such a part; reading it this way costs a fraction of what an index does.
class PlainPart
{
public:
    explicit PlainPart(std::string_view bytes) : bytes_(bytes) {}

    /// False for a part that has anything else in it, well-formed or not; then what was read is of no use.
    bool Read(std::vector<Relationship>& relationships)
    {
        // What XML can't hold is for Index to refuse.
        if (CheckCharacters(bytes_, 0, bytes_.size(), Ampersands::BeginReferences).fault != nullptr)
            return false;
        if (Skip("<?xml")) {
            at_ = bytes_.find("?>", at_);
            if (!Skip("?>"))
                return false;
        }
        SkipSpace();
        if (!Skip("<Relationships xmlns=\"") || !Skip(packageNamespace) || !Skip("\">"))
            return false;
        for (SkipSpace(); Skip("<Relationship "); SkipSpace()) {
            Relationship& relationship = relationships.emplace_back();
            relationship.offset = at_ - std::string_view("<Relationship ").size();
            if (!ReadAttributes(relationship))
                return false;
        }
        if (!Skip("</Relationships>"))
            return false;
        SkipSpace();
        return at_ == bytes_.size();
    }

private:
    static constexpr std::string_view packageNamespace = "http://schemas.openxmlformats.org/package/2006/relationships";

    bool Skip(std::string_view text)
    {
        if (at_ > bytes_.size() || !bytes_.substr(at_).starts_with(text))
            return false;
        at_ += text.size();
        return true;
    }

    void SkipSpace() { at_ = std::min(bytes_.find_first_not_of(" \t\r\n", at_), bytes_.size()); }

    /// Each of the four attributes at most once, up to the end of the empty-element tag.
    bool ReadAttributes(Relationship& relationship)
    {
        std::string_view mode;
        do {
            if (!(Skip("Id=\"")       ? ReadValue(relationship.id)
                  : Skip("Type=\"")   ? ReadValue(relationship.type)
                  : Skip("Target=\"") ? ReadValue(relationship.target)
                                      : Skip("TargetMode=\"") && ReadValue(mode)))
                return false;
            // Some programs put a blank in front of "/>".
        } while (Skip(" ") && !bytes_.substr(at_).starts_with("/>"));
        relationship.external = mode == "External";
        return Skip("/>");
    }

    bool ReadValue(std::string_view& value)
    {
        // Given already, if only as "": an attribute that comes twice is for Index.
        if (value.data() != nullptr)
            return false;
        std::size_t end = at_;
        while (end < bytes_.size() && static_cast<unsigned char>(bytes_[end]) >= ' ' && bytes_[end] != '"' &&
               bytes_[end] != '&' && bytes_[end] != '<')
            ++end;
        value = bytes_.substr(at_, end - at_);
        at_ = end;
        return Skip("\"");
    }

    std::string_view bytes_;
    std::size_t at_ = 0;
};

}  // namespace

bool Relationship::Is(std::string_view kind) const
{
    return !removed && KindOf(type) == kind;
}

Relationships::Relationships(std::string bytes, std::string_view part, const Limits& limits) : bytes_(std::move(bytes))
{
    if (!PlainPart(bytes_).Read(relationships_)) {
        relationships_.clear();
        Index(part, limits);
    }
    parsed_ = relationships_.size();
    retargeted_.resize(parsed_);
}

/// Reads whatever XML allows.
void Relationships::Index(std::string_view part, const Limits& limits)
{
    const XmlDocument document(bytes_, part, limits);
    for (const Node element : document.Root().ChildElements()) {
        if (!document.Is(element, Ns::PackageRelationships, "Relationship"))
            continue;
        Relationship relationship;
        std::string_view mode;
        document.ForEachAttribute(element, [&](std::string_view name, std::string_view value) {
            const auto take = [&](std::string_view& place) { place = Keep(std::string(value)); };
            if (name == "Id")
                take(relationship.id);
            else if (name == "Type")
                take(relationship.type);
            else if (name == "Target")
                take(relationship.target);
            else if (name == "TargetMode")
                take(mode);
        });
        relationship.external = mode == "External";
        relationship.offset = document.OffsetOf(element);
        relationships_.push_back(relationship);
    }
}

/// The first one of that id, removed or not.
std::optional<std::size_t> Relationships::IndexOf(std::string_view id) const
{
    // So few are found faster one after the other than by way of a map.
    constexpr std::size_t few = 16;
    if (relationships_.size() <= few) {
        const auto found = std::ranges::find(relationships_, id, &Relationship::id);
        if (found == relationships_.end())
            return std::nullopt;
        return static_cast<std::size_t>(found - relationships_.begin());
    }
    // Fills the map once. emplace keeps the first of an id, which is the one that counts.
    for (std::size_t i = byId_.empty() ? 0 : relationships_.size(); i < relationships_.size(); ++i)
        byId_.emplace(relationships_[i].id, i);
    const auto found = byId_.find(id);
    return found == byId_.end() ? std::nullopt : std::optional(found->second);
}

const Relationship* Relationships::Find(std::string_view id) const
{
    const auto index = IndexOf(id);
    return index && !relationships_[*index].removed ? &relationships_[*index] : nullptr;
}

const Relationship* Relationships::FirstOf(std::string_view kind) const
{
    const auto found = std::ranges::find_if(relationships_, [&](const Relationship& r) { return r.Is(kind); });
    return found == relationships_.end() ? nullptr : &*found;
}

std::size_t Relationships::IndexForEdit(std::string_view id)
{
    if (!repeated_) {
        repeated_.emplace();
        std::unordered_set<std::string_view> seen;
        for (const Relationship& relationship : relationships_)
            if (!seen.insert(relationship.id).second)
                repeated_->insert(relationship.id);
    }
    const std::size_t index = IndexOf(id).value();
    if (repeated_->contains(id))
        throw Damage({}, "several relationships have the id \"" + std::string(id) + "\"", relationships_[index].offset);
    return index;
}

void Relationships::PutTarget(std::string_view id, std::string target)
{
    const std::size_t index = IndexForEdit(id);
    // An empty target has data, too. Without the attribute there is no place for a value.
    if (relationships_[index].target.data() == nullptr)
        throw Damage({}, "a relationship has no target", relationships_[index].offset);
    relationships_[index].target = Keep(std::move(target));
    retargeted_[index] = true;
    edited_ = true;
}

std::string Relationships::NewId()
{
    for (; numbered_ < relationships_.size(); ++numbered_) {
        const std::string_view id = relationships_[numbered_].id;
        // Nine digits fit into every sum.
        if (!id.starts_with("rId") || id.size() > 12 || id.find_first_not_of("0123456789", 3) != std::string_view::npos)
            continue;
        std::size_t number = 0;
        for (const char digit : id.substr(3))
            number = number * 10 + static_cast<std::size_t>(digit - '0');
        largestId_ = std::max(largestId_, number);
    }
    std::string id;
    do
        id = "rId" + std::to_string(++largestId_);
    while (IndexOf(id) || reserved_.contains(id));  // an id with more digits than were looked at may be this one
    return id;
}

void Relationships::Reserve(std::string_view id)
{
    // Others are never given.
    if (id.starts_with("rId"))
        reserved_.emplace(id);
}

std::string_view Relationships::AddLike(std::string_view id, std::string target)
{
    const std::string_view newId = Add(relationships_[IndexForEdit(id)].type, std::move(target));
    relationships_.back().external = true;
    return newId;
}

std::string_view Relationships::Add(std::string_view type, std::string target)
{
    Relationship relationship;
    relationship.id = Keep(NewId());
    relationship.type = Keep(std::string(type));
    relationship.target = Keep(std::move(target));
    relationships_.push_back(relationship);
    retargeted_.push_back(false);
    if (!byId_.empty())
        byId_.emplace(relationship.id, relationships_.size() - 1);
    edited_ = true;
    return relationship.id;
}

void Relationships::Remove(std::string_view id)
{
    relationships_[IndexForEdit(id)].removed = true;
    edited_ = true;
}

bool Relationships::ReadAgainAs(const Relationships& other) const
{
    const auto asRead = [](std::string_view value) { return DecodeAttribute(EscapeAttribute(FromUtf8(value))); };
    std::vector<Relationship> present = relationships_;
    std::erase_if(present, [](const Relationship& relationship) { return relationship.removed; });
    return std::ranges::equal(present, other.relationships_, [&](const Relationship& left, const Relationship& right) {
        return asRead(left.id) == right.id && asRead(left.type) == right.type && asRead(left.target) == right.target &&
               left.external == right.external;
    });
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
            edits.push_back({target.valueBegin, target.valueEnd, EscapeAttribute(FromUtf8(relationship.target))});
        }
    }

    const std::string_view prefix = RootElement(bytes).Prefix();
    std::string added;
    for (std::size_t i = parsed_; i < relationships_.size(); ++i)
        if (!relationships_[i].removed)
            added += ElementOf(relationships_[i], prefix);
    if (!added.empty())
        edits.push_back(AppendToRoot(bytes, std::move(added)));
    return ApplyEdits(bytes, std::move(edits));
}

}  // namespace tessarine::builtin
