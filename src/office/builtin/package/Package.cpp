#include "office/builtin/package/Package.h"

#include <algorithm>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/package/PartName.h"
#include "office/builtin/zip/Deflate.h"
#include "saving/ReplacementFile.h"

namespace tessarine::builtin
{

namespace
{

/// An entry's name as the name of a part, when it is not one as it stands: older .NET versions write backslashes.
std::optional<std::string> PartNameOfOddEntry(std::string_view entryName)
{
    if (!entryName.starts_with('/') && entryName.find('\\') == std::string_view::npos)
        return std::nullopt;
    std::string name(entryName);
    std::ranges::replace(name, '\\', '/');
    return name.substr(std::min(name.find_first_not_of('/'), name.size()));
}

}  // namespace

Package::Package(std::unique_ptr<RandomAccessBytes> bytes, const Limits& limits, const SaveTerms& terms)
    : bytes_(std::move(bytes)),
      limits_(limits),
      terms_(terms),
      directory_(*bytes_, limits_),
      kept_(limits_.keptBytes),
      wasInflated_(directory_.Entries().size())
{
    const auto& entries = directory_.Entries();
    byName_.reserve(entries.size());
    for (Entry entry = 0; entry < entries.size(); ++entry) {
        byName_[entries[entry].name] = entry;
        if (auto name = PartNameOfOddEntry(entries[entry].name))
            oddNames_.emplace(entry, std::move(*name));
    }
}

std::optional<std::string_view> Package::NameGivenTwice() const
{
    const auto& entries = directory_.Entries();
    // The map holds the last entry of each name.
    if (byName_.size() != entries.size())
        for (Entry entry = 0; entry < entries.size(); ++entry)
            if (byName_.at(entries[entry].name) != entry)
                return entries[entry].name;
    return std::nullopt;
}

std::string_view Package::NameOf(Entry entry) const
{
    const auto odd = oddNames_.find(entry);
    return odd == oddNames_.end() ? directory_.Entries()[entry].name : odd->second;
}

std::optional<Package::Entry> Package::Find(std::string_view partName) const
{
    auto found = byName_.find(partName);
    // Targets are URIs; the entry may be named by the plain characters.
    if (found == byName_.end() && partName.find('%') != std::string_view::npos)
        found = byName_.find(DecodePercent(partName));
    if (found == byName_.end())
        return std::nullopt;
    return found->second;
}

std::vector<Package::Entry> Package::PartsOfType(std::string_view type)
{
    const ContentTypes& types = Types();
    std::vector<Entry> parts;
    // Any part may have the type by its extension then; otherwise the overrides name all that have it.
    if (types.HasDefaultOf(type)) {
        for (const auto& [name, entry] : byName_)
            if (types.TypeOf(name) == type)
                parts.push_back(entry);
    } else {
        for (const std::string_view name : types.PartsOfType(type))
            if (const auto entry = Find(name))
                parts.push_back(*entry);
    }
    std::ranges::sort(parts);
    return parts;
}

bool Package::HasPart(const std::function<bool(Entry, std::string_view name, std::string_view type)>& test)
{
    const ContentTypes& types = Types();
    std::vector<std::optional<std::string_view>> overrides(EntryCount());
    for (const ContentTypes::Type& part : types.Overrides())
        if (const auto entry = Find(part.name); entry && !overrides[*entry])
            overrides[*entry] = part.type;
    std::map<std::string_view, std::string> defaults;  // by extension, of which there are few
    for (Entry entry = 0; entry < EntryCount(); ++entry) {
        const std::string_view name = NameOf(entry);
        std::optional<std::string_view> type = overrides[entry];
        if (!type) {
            const auto [extension, isNew] = defaults.try_emplace(ExtensionOf(name));
            if (isNew)
                extension->second = types.DefaultOf(extension->first);
            type = extension->second;
        }
        if (test(entry, name, *type))
            return true;
    }
    return false;
}

std::optional<Package::Entry> Package::Follow(std::optional<Entry> source, const Relationship* relationship) const
{
    if (relationship == nullptr || relationship->external)
        return std::nullopt;
    return Find(ResolveTarget(source ? NameOf(*source) : std::string_view(), relationship->target));
}

std::string Package::Read(Entry entry) const
{
    std::string content;
    ReadInto(content, entry);
    return content;
}

/// Reads into memory that is made larger when it has to be; it may hold more than the content.
std::string_view Package::ReadInto(std::string& memory, Entry entry) const
{
    if (const auto replaced = changes_.replaced.find(entry); replaced != changes_.replaced.end())
        return memory = replaced->second;
    FailIfOverwritten();

    const ZipEntry& zip = directory_.Entries()[entry];
    if (zip.IsEncrypted())
        throw Failure(FailureNumber::Unspecified, u"The entry " + FromUtf8(zip.name) + u" is protected by a password");
    if (zip.method != zipStored && zip.method != zipDeflated)
        throw NotAPresentation("The entry " + std::string(NameOf(entry)) + " is packed by method " +
                               std::to_string(zip.method) + ", which packages don't use");
    if (zip.size > limits_.partBytes || zip.packedSize > limits_.partBytes)
        throw Damage(zip.name, "it would take " + std::to_string(zip.size) + " bytes, more than a part may");
    if (zip.size > limits_.alwaysUnpacked && zip.size / limits_.ratio > zip.packedSize)
        throw Damage(zip.name,
                     "it would unpack to " + std::to_string(zip.size) + " bytes, too many for its packed size");
    // Many parts, each within its limit, are much work together. What is read again was counted before: how often that
    // is goes by the pairs and places of the job.
    inflated_ += wasInflated_[entry] ? 0 : zip.size;
    wasInflated_[entry] = true;
    if (inflated_ > limits_.packageXmlBytes)
        throw Damage(zip.name, "the parts of this package would take more memory than they may");

    const std::string_view packed = ZipDirectory::ReadPacked(*bytes_, zip, packed_);
    // Never made smaller: growing it again would fill it with zeros for each part.
    if (memory.size() < zip.size)
        memory.resize(zip.size);
    const std::string_view content(memory.data(), zip.size);
    if (zip.method == zipStored)
        packed.copy(memory.data(), zip.size);
    else if (!Inflate(packed, memory.data(), zip.size))
        throw Damage(zip.name, "its packed data is not valid");
    if ((zip.method == zipStored && packed.size() != zip.size) || Crc32(content) != zip.crc)
        throw Damage(zip.name, "its checksum is wrong");
    return content;
}

/// True for a part in another encoding than UTF-8, which is kept in mind for writing.
bool Package::NeedsDecoding(std::string_view bytes, Entry entry) const
{
    const XmlEncoding encoding = EncodingOf(bytes, NameOf(entry));
    if (encoding != XmlEncoding::Utf8)
        encodings_[entry] = encoding;
    return encoding != XmlEncoding::Utf8;
}

std::string Package::ReadXml(Entry entry) const
{
    std::string bytes = Read(entry);
    return NeedsDecoding(bytes, entry) ? DecodeXml(bytes, encodings_[entry], NameOf(entry)) : bytes;
}

std::string_view Package::ReadXmlOnce(Entry entry)
{
    if (onceEntry_ == entry)
        return onceContent_;
    // First, because what raises below leaves neither the old text nor the new one there.
    onceDocument_.reset();
    onceEntry_.reset();
    onceContent_ = ReadInto(once_, entry);
    if (NeedsDecoding(onceContent_, entry))
        // Kept in once_, which was the memory of the bytes.
        onceContent_ = once_ = DecodeXml(onceContent_, encodings_[entry], NameOf(entry));
    onceEntry_ = entry;
    return onceContent_;
}

const XmlDocument& Package::ReadDocumentOnce(Entry entry)
{
    const std::string_view xml = ReadXmlOnce(entry);
    if (!onceDocument_)
        onceDocument_.emplace(xml, NameOf(entry), limits_);
    return *onceDocument_;
}

void Package::ReplaceXml(Entry entry, std::string_view utf8)
{
    const auto encoding = encodings_.find(entry);
    changes_.replaced[entry] = EncodeXml(utf8, encoding == encodings_.end() ? XmlEncoding::Utf8 : encoding->second);
    onceDocument_.reset();
    onceEntry_.reset();
}

void Package::Grow(Entry entry, std::size_t bytes)
{
    grown_ += bytes;
    if (grown_ > limits_.grownBytes)
        throw Failure(FailureNumber::BadFormat,
                      FromUtf8(NameOf(entry)) + u": The changed texts would make the presentation too large");
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
    if (!entry)
        return rootRelationships_ ? *rootRelationships_ : Load(entry);
    const auto known = relationships_.find(*entry);
    return known != relationships_.end() ? known->second : Load(entry);
}

Relationships& Package::Load(std::optional<Entry> entry)
{
    const std::string name = RelationshipPartName(entry ? NameOf(*entry) : std::string_view());
    const auto part = Find(name);
    if (!entry)
        return part ? rootRelationships_.emplace(ReadXml(*part), name, limits_) : rootRelationships_.emplace();
    if (!part)
        return relationships_.try_emplace(*entry).first->second;
    return relationships_.try_emplace(*entry, ReadXml(*part), name, limits_).first->second;
}

ContentTypes& Package::Types()
{
    if (!types_) {
        const auto part = Find(ContentTypes::entryName);
        if (!part)
            throw Damage(ContentTypes::entryName, "it is missing");
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
    const auto putRelationships = [&](const std::string& name, const Relationships& relationships) {
        const std::string bytes = relationships.Bytes();
        if (!relationships.ReadAgainAs(Relationships(bytes, name, limits_)))
            throw FailedEdit(name, "a relationship would not read as it was put");
        put(name, bytes);
    };
    if (rootRelationships_ && rootRelationships_->IsEdited())
        putRelationships(RelationshipPartName({}), *rootRelationships_);
    for (const auto& [entry, relationships] : relationships_)
        if (relationships.IsEdited())
            putRelationships(RelationshipPartName(NameOf(entry)), relationships);
    if (types_ && types_->IsEdited())
        put(std::string(ContentTypes::entryName), types_->Bytes());
}

void Package::GiveUp(Entry entry, StringView reason)
{
    if (!halfEdit_)
        halfEdit_ = FailedEdit(NameOf(entry), ToUtf8(reason));
}

bool Package::IsChanged() const
{
    return !changes_.Empty() || (types_ && types_->IsEdited()) ||
           (rootRelationships_ && rootRelationships_->IsEdited()) ||
           std::ranges::any_of(relationships_, [](const auto& item) { return item.second.IsEdited(); });
}

void Package::Save(StringView path)
{
    // First of all: a file whose date moves looks saved.
    FailIfNotToBeSaved();
    OpenedFile* const opened = bytes_->Opened();
    if (!IsChanged()) {
        opened ? TouchFile(path, *opened) : TouchFile(path);
        return;
    }
    PutEditedXml();
    ReplacementFile target = opened ? ReplacementFile(path, *opened, terms_)
                                    : ReplacementFile(path, ReplacementFile::Missing::Fails, terms_);
    WriteZip(*bytes_, directory_, changes_, target);
    target.Commit();
    isOverwritten_ = opened && target.WasWrittenInPlace();
}

void Package::RehearseSave(StringView path)
{
    FailIfNotToBeSaved();
    const bool isChanged = IsChanged();
    if (isChanged)
        PutEditedXml();
    OpenedFile* const opened = bytes_->Opened();
    if (opened == nullptr)
        return;
    if (!isChanged) {
        RehearseTouch(path, *opened);
        return;
    }
    ReplacementFile target(path, *opened, terms_, ReplacementFile::Effect::Rehearsed);
    WriteZip(*bytes_, directory_, changes_, target);
    target.Commit();
}

void Package::FailIfNotToBeSaved() const
{
    if (halfEdit_)
        throw *halfEdit_;
    FailIfOverwritten();
}

void Package::FailIfOverwritten() const
{
    if (isOverwritten_)
        throw Failure(FailureNumber::WriteFault,
                      u"The presentation was saved in place; open it again to go on working with it");
}

}  // namespace tessarine::builtin
