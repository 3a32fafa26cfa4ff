#include "office/builtin/binary/ExternalObjects.h"

#include <algorithm>
#include <utility>

#include "office/builtin/records/RecordTypes.h"

namespace tessarine::builtin
{

namespace
{

/// Kinds of CString in ExHyperlinkContainer ([MS-PPT] 2.10.18).
constexpr std::uint16_t nameInstance = 0;
constexpr std::uint16_t targetInstance = 1;
constexpr std::uint16_t locationInstance = 3;

}  // namespace

ExternalObjects::ExternalObjects(std::string_view bytes, const std::optional<Record>& list) : bytes_(bytes)
{
    if (!list)
        return;
    for (const Record& object : Records(bytes_, *list)) {
        switch (object.type) {
            case record::ExternalObjectListAtom:
                seed_ = object;
                if (object.Holds(4))
                    greatest_ = std::max(greatest_, U32At(object.Content(bytes_), 0));
                break;
            case record::ExternalHyperlink:
                ReadHyperlink(object);
                break;
            case record::ExternalOleEmbed:
                ReadObject(object, ExternalObjectKind::Embedded);
                break;
            case record::ExternalOleLink:
                ReadObject(object, ExternalObjectKind::Linked);
                break;
            case record::ExternalOleControl:
                ReadObject(object, ExternalObjectKind::Control);
                break;
            case record::ExternalAviMovie:
            case record::ExternalMciMovie:
            case record::ExternalMidiAudio:
            case record::ExternalCdAudio:
            case record::ExternalWavAudioEmbedded:
            case record::ExternalWavAudioLink:
                ReadObject(object, ExternalObjectKind::Media);
                break;
            default:
                break;
        }
    }
}

void ExternalObjects::ReadHyperlink(const Record& record)
{
    Hyperlink link;
    link.record = record;
    std::optional<ExternalObjectId> id;
    for (const Record& part : Records(bytes_, record)) {
        if (part.type == record::ExternalHyperlinkAtom && part.Holds(4))
            id = U32At(part.Content(bytes_), 0);
        else if (part.type == record::CString && part.instance == nameInstance)
            link.name = Utf16Content(part.Content(bytes_));
        else if (part.type == record::CString && part.instance == targetInstance)
            link.target = Utf16Content(part.Content(bytes_));
        else if (part.type == record::CString && part.instance == locationInstance)
            link.leadsInside = part.ContentSize() > 0;
    }
    if (!id)
        return;
    greatest_ = std::max(greatest_, *id);
    hyperlinks_.try_emplace(*id, std::move(link));
}

void ExternalObjects::ReadObject(const Record& record, ExternalObjectKind kind)
{
    // ExOleObjAtom ([MS-PPT] 2.10.12) in an OLE object; media begin with an atom, or a container around one, whose
    // first field is the number.
    for (const Record& part : Records(bytes_, record)) {
        const std::string_view content = part.Content(bytes_);
        if (part.type == record::ExternalOleObjectAtom && part.Holds(20)) {
            objects_.try_emplace(U32At(content, 8), OleObject{kind, U32At(content, 16)});
            return;
        }
        if (kind != ExternalObjectKind::Media)
            continue;
        for (const Record& inner : Records(bytes_, part))
            if (inner.Holds(4)) {
                objects_.try_emplace(U32At(inner.Content(bytes_), 0), OleObject{kind, {}});
                return;
            }
        if (!part.IsContainer() && part.Holds(4)) {
            objects_.try_emplace(U32At(content, 0), OleObject{kind, {}});
            return;
        }
    }
}

std::optional<ExternalObjectKind> ExternalObjects::KindOf(ExternalObjectId id) const
{
    const auto object = objects_.find(id);
    return object == objects_.end() ? std::nullopt : std::optional(object->second.kind);
}

std::optional<std::uint32_t> ExternalObjects::StorageOf(ExternalObjectId id) const
{
    const auto object = objects_.find(id);
    return object == objects_.end() ? std::nullopt : object->second.storage;
}

String ExternalObjects::Address(ExternalObjectId id) const
{
    return hyperlinks_.at(id).target.value_or(String());
}

bool ExternalObjects::LeadsInside(ExternalObjectId id) const
{
    return hyperlinks_.at(id).leadsInside;
}

void ExternalObjects::PutAddress(ExternalObjectId id, const String& address)
{
    Hyperlink& link = hyperlinks_.at(id);
    // PowerPoint names a link by its address unless a person has named it.
    if (link.name == link.target)
        link.name = address;
    link.target = address;
    link.isChanged = isChanged_ = true;
}

ExternalObjectId ExternalObjects::Copy(ExternalObjectId id, const String& address)
{
    Hyperlink link = hyperlinks_.at(id);
    link.isCopy = true;
    const ExternalObjectId added = ++greatest_;
    hyperlinks_.emplace(added, std::move(link));
    PutAddress(added, address);
    hasCopies_ = true;
    return added;
}

void ExternalObjects::Remove(ExternalObjectId id)
{
    hyperlinks_.at(id).isRemoved = isChanged_ = true;
}

/// All of the old one but for the number and the texts that have changed.
std::string ExternalObjects::BytesOf(ExternalObjectId id, const Hyperlink& hyperlink) const
{
    std::string content;
    bool hasTarget = false;
    for (const Record& part : Records(bytes_, hyperlink.record)) {
        if (part.type == record::ExternalHyperlinkAtom && part.Holds(4)) {
            std::string number;
            AppendU32(number, id);
            content += RecordLike(part, number.append(part.Content(bytes_).substr(4)));
        } else if (part.type == record::CString && part.instance == nameInstance) {
            content += CStringOf(nameInstance, hyperlink.name.value_or(String()));
        } else if (part.type == record::CString && part.instance == targetInstance) {
            content += CStringOf(targetInstance, hyperlink.target.value_or(String()));
            hasTarget = true;
        } else {
            // In the order of the kinds.
            if (!hasTarget && hyperlink.target && part.type == record::CString && part.instance > targetInstance) {
                content += CStringOf(targetInstance, *hyperlink.target);
                hasTarget = true;
            }
            content.append(bytes_, part.begin, part.end - part.begin);
        }
    }
    if (!hasTarget && hyperlink.target)
        content += CStringOf(targetInstance, *hyperlink.target);
    return RecordLike(hyperlink.record, content);
}

void ExternalObjects::Put(RecordEdits& edits) const
{
    // A copy stands in front of what it is a copy of.
    for (const auto& [id, link] : hyperlinks_)
        if (link.isCopy && !link.isRemoved)
            edits.Replace(link.record.begin, link.record.begin, BytesOf(id, link));
    for (const auto& [id, link] : hyperlinks_) {
        if (link.isCopy)
            continue;
        if (link.isRemoved)
            edits.Replace(link.record.begin, link.record.end, {});
        else if (link.isChanged)
            edits.Replace(link.record.begin, link.record.end, BytesOf(id, link));
    }
    if (hasCopies_ && seed_ && seed_->Holds(4)) {
        std::string number;
        AppendU32(number, greatest_);
        edits.Overwrite(seed_->ContentBegin(), number);
    }
}

}  // namespace tessarine::builtin
