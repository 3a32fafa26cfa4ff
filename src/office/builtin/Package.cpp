#include "office/builtin/Package.h"

#include <algorithm>

#include "office/builtin/Damage.h"
#include "office/builtin/Deflate.h"
#include "office/builtin/PartName.h"
#include "office/builtin/XmlEncoding.h"
#include "platform/ReplacementFile.h"

namespace tessarine::builtin
{

namespace
{

constexpr std::string_view contentTypesName = "[Content_Types].xml";

std::string PartNameOf(std::string_view entryName)
{
    std::string name(entryName);
    std::ranges::replace(name, '\\', '/');
    return name.substr(std::min(name.find_first_not_of('/'), name.size()));
}

void Decode(std::string& bytes, const std::string& name)
{
    const XmlEncoding encoding = EncodingOf(bytes, name);
    if (encoding != XmlEncoding::Utf8)
        bytes = DecodeXml(bytes, encoding, name);
}

}  // namespace

Package::Package(std::unique_ptr<RandomAccessBytes> bytes, const Limits& limits)
    : bytes_(std::move(bytes)), limits_(limits), directory_(*bytes_, limits_)
{
    const auto& entries = directory_.Entries();
    byName_.reserve(entries.size());
    for (Entry entry = 0; entry < entries.size(); ++entry)
        byName_[entries[entry].name] = entry;
}

std::string Package::NameOf(Entry entry) const
{
    return PartNameOf(directory_.Entries()[entry].name);
}

std::optional<Package::Entry> Package::Find(std::string_view partName) const
{
    auto found = byName_.find(partName);
    if (found == byName_.end() && partName.find('%') != std::string_view::npos)
        found = byName_.find(DecodePercent(partName));
    if (found == byName_.end())
        return std::nullopt;
    return found->second;
}

std::optional<Package::Entry> Package::Follow(std::optional<Entry> source, const Relationship* relationship) const
{
    if (relationship == nullptr || relationship->external)
        return std::nullopt;
    return Find(ResolveTarget(source ? NameOf(*source) : std::string(), relationship->target));
}

std::string Package::Read(Entry entry) const
{
    std::string content;
    ReadInto(content, entry);
    return content;
}

void Package::ReadInto(std::string& content, Entry entry) const
{
    if (const auto replaced = changes_.replaced.find(entry); replaced != changes_.replaced.end()) {
        content = replaced->second;
        return;
    }

    const ZipEntry& zip = directory_.Entries()[entry];
    if (zip.IsEncrypted())
        throw Failure(FailureNumber::Unspecified, u"The entry " + FromUtf8(zip.name) + u" is protected by a password");
    if (zip.method != zipStored && zip.method != zipDeflated)
        throw NotAPresentation("The entry " + NameOf(entry) + " is packed by method " + std::to_string(zip.method) +
                               ", which presentations don't use");
    if (zip.size > limits_.partBytes || zip.packedSize > limits_.partBytes)
        throw Damage(zip.name, "it would take " + std::to_string(zip.size) + " bytes, more than a part may");
    inflated_ += zip.size;
    if (inflated_ > limits_.packageXmlBytes)
        throw Damage(zip.name, "the parts of this package would take more memory than they may");

    const std::string_view packed = ZipDirectory::ReadPacked(*bytes_, zip, packed_);
    if (zip.method == zipStored) {
        content = packed;
    } else {
        content.resize(zip.size);
        if (!Inflate(packed, content.data(), content.size()))
            throw Damage(zip.name, "its packed data is not valid");
    }
    if (content.size() != zip.size || Crc32(content) != zip.crc)
        throw Damage(zip.name, "its checksum is wrong");
}

std::string Package::ReadXml(Entry entry) const
{
    std::string bytes;
    ReadInto(bytes, entry);
    Decode(bytes, NameOf(entry));
    return bytes;
}

const std::string& Package::ReadXmlOnce(Entry entry)
{
    if (onceEntry_ != entry) {
        onceEntry_.reset();
        ReadInto(once_, entry);
        Decode(once_, NameOf(entry));
        onceEntry_ = entry;
    }
    return once_;
}

void Package::ReplaceXml(Entry entry, std::string_view utf8)
{
    const XmlEncoding encoding = EncodingOf(Read(entry), NameOf(entry));
    changes_.replaced[entry] = EncodeXml(utf8, encoding);
    onceEntry_.reset();
}

void Package::Add(std::string partName, std::string bytes)
{
    changes_.added[std::move(partName)] = std::move(bytes);
}

void Package::Remove(Entry entry)
{
    changes_.removed.insert(entry);
}

Relationships& Package::RelationshipsOf(std::optional<Entry> entry)
{
    const std::string name = RelationshipPartName(entry ? NameOf(*entry) : std::string());
    const auto known = relationships_.find(name);
    if (known != relationships_.end())
        return known->second;
    const auto part = Find(name);
    return relationships_.emplace(name, part ? Relationships(ReadXml(*part), name, limits_) : Relationships())
        .first->second;
}

ContentTypes& Package::Types()
{
    if (!types_) {
        const auto part = Find(contentTypesName);
        if (!part)
            throw Damage(contentTypesName, "it is missing");
        types_.emplace(ReadXml(*part), limits_);
    }
    return *types_;
}

/// Puts the edited relationships and content types among the changes. They are made from the old bytes each time, so
/// that saving twice writes the same.
void Package::PutEditedXml()
{
    const auto put = [&](const std::string& name, const std::string& utf8) {
        if (const auto entry = Find(name))
            ReplaceXml(*entry, utf8);
        else
            changes_.added[name] = utf8;
    };
    for (const auto& [name, relationships] : relationships_)
        if (relationships.IsEdited())
            put(name, relationships.Bytes());
    if (types_ && types_->IsEdited())
        put(std::string(contentTypesName), types_->Bytes());
}

bool Package::IsChanged() const
{
    return !changes_.Empty() || (types_ && types_->IsEdited()) ||
           std::ranges::any_of(relationships_, [](const auto& item) { return item.second.IsEdited(); });
}

void Package::Save(StringView path)
{
    if (!IsChanged()) {
        TouchFile(path);
        return;
    }
    PutEditedXml();
    ReplacementFile target(path);
    WriteZip(*bytes_, directory_, changes_, target);
    target.Commit();
}

}  // namespace tessarine::builtin
