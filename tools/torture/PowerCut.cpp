#include "PowerCut.h"

#include <algorithm>
#include <cstring>

namespace tessarine::torture
{

namespace
{

constexpr std::size_t page = 4096;

void Splice(std::string& content, std::uint64_t offset, std::string_view bytes)
{
    if (content.size() < offset + bytes.size())
        content.resize(offset + bytes.size(), '\0');
    content.replace(offset, bytes.size(), bytes);
}

std::string Normal(const std::string& path)
{
    return Path(path).lexically_normal().string();
}

std::string FolderOf(const std::string& path)
{
    return Path(path).parent_path().string();
}

}  // namespace

std::vector<Record> ReadRecords(const Path& record)
{
    const std::string all = ContentIfThere(record).value_or("");
    std::vector<Record> records;
    for (std::size_t at = 0; at + sizeof(RecordHead) <= all.size();) {
        Record next;
        std::memcpy(&next.head, all.data() + at, sizeof next.head);
        at += sizeof next.head;
        next.path = Normal(all.substr(at, next.head.pathSize));
        at += next.head.pathSize;
        next.otherPath = Normal(all.substr(at, next.head.otherPathSize));
        at += next.head.otherPathSize;
        next.bytes = all.substr(at, next.head.byteCount);
        at += next.head.byteCount;
        records.push_back(std::move(next));
    }
    return records;
}

Disk::Disk(const Path& folder)
{
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const auto content = entry.is_symlink() ? std::nullopt : ContentIfThere(entry.path());
        const auto status = StatusOf(entry.path());
        if (!content || !status)
            continue;
        // A file with several names is one file.
        const auto [known, isNew] = byIdentity_.try_emplace({status->st_dev, status->st_ino}, files_.size());
        if (isNew)
            files_.push_back({*content, {}});
        const FileNumber number = known->second;
        names_[entry.path().string()] = certainNames_[entry.path().string()] = number;
    }
}

Disk::FileNumber Disk::NumberOf(const RecordHead& head)
{
    const auto [found, isNew] = byIdentity_.try_emplace({head.device, head.inode}, files_.size());
    if (isNew)
        files_.emplace_back();
    return found->second;
}

void Disk::Put(std::map<std::string, FileNumber>& names, const NameChange& change)
{
    if (!change.alsoRemoved.empty())
        names.erase(change.alsoRemoved);
    if (change.file)
        names[change.path] = *change.file;
    else
        names.erase(change.path);
}

void Disk::ChangeName(NameChange change)
{
    Put(names_, change);
    pendingNames_.push_back(std::move(change));
}

void Disk::Flush(const Record& record)
{
    if (record.head.pathSize == 0) {
        File& file = files_[NumberOf(record.head)];
        for (const Change& change : file.pending) {
            if (change.bytes)
                Splice(file.certain, change.offset, *change.bytes);
            else
                file.certain.resize(change.offset, '\0');
        }
        file.pending.clear();
        return;
    }
    const auto isOfFolder = [&](const NameChange& change) { return FolderOf(change.path) == record.path; };
    for (const NameChange& change : pendingNames_)
        if (isOfFolder(change))
            Put(certainNames_, change);
    std::erase_if(pendingNames_, isOfFolder);
}

void Disk::Apply(const Record& record)
{
    const RecordHead& head = record.head;
    switch (head.kind) {
        case RecordKind::Made:
            // The number of a file that was removed may be used again.
            byIdentity_.erase({head.device, head.inode});
            ChangeName({record.path, NumberOf(head), {}});
            break;
        case RecordKind::Linked:
            ChangeName({record.path, NumberOf(head), {}});
            break;
        case RecordKind::Written:
            files_[NumberOf(head)].pending.push_back({head.number, record.bytes});
            break;
        case RecordKind::CutOff:
            files_[NumberOf(head)].pending.push_back({head.number, std::nullopt});
            break;
        case RecordKind::Flushed:
            Flush(record);
            break;
        case RecordKind::ModeSet:
            break;
        case RecordKind::Renamed:
            if (const auto found = names_.find(record.path); found != names_.end())
                ChangeName({record.otherPath, found->second, record.path});
            break;
        case RecordKind::Exchanged:
            if (names_.contains(record.path) && names_.contains(record.otherPath)) {
                const FileNumber first = names_[record.path];
                ChangeName({record.path, names_[record.otherPath], {}});
                ChangeName({record.otherPath, first, {}});
            }
            break;
        case RecordKind::Removed:
            ChangeName({record.path, std::nullopt, {}});
            break;
    }
}

std::string Disk::ContentAfterCut(const File& file, Random& random) const
{
    std::string content = file.certain;
    const std::size_t kept = random.OneOf(std::array<std::size_t, 3>{0, 50, 100});
    for (const Change& change : file.pending) {
        if (!change.bytes) {
            if (random.Chance(kept))
                content.resize(change.offset, '\0');
            continue;
        }
        for (std::size_t at = 0; at < change.bytes->size(); at += page) {
            const std::string_view piece = std::string_view(*change.bytes).substr(at, page);
            if (random.Chance(kept))
                Splice(content, change.offset + at, piece);
        }
    }
    return content;
}

std::map<std::string, std::string> Disk::Surviving(Random& random) const
{
    auto names = certainNames_;
    const bool inOrder = random.Chance(50);
    const std::size_t reached = random.Below(pendingNames_.size() + 1);
    for (std::size_t at = 0; at < pendingNames_.size(); ++at)
        if (inOrder ? at < reached : random.Chance(50))
            Put(names, pendingNames_[at]);
    std::map<std::string, std::string> contents;
    for (const auto& [path, number] : names)
        contents[path] = ContentAfterCut(files_[number], random);
    return contents;
}

}  // namespace tessarine::torture
