#include "run/BackupFolder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <functional>
#include <set>
#include <span>
#include <thread>
#include <unordered_map>
#include <utility>

#include "files/FileFailure.h"
#include "files/FileOwner.h"
#include "files/HeldFolder.h"
#include "files/OpenForReading.h"
#include "files/ReadAt.h"
#include "files/WriteAll.h"
#include "platform/FolderOf.h"
#include "platform/NativePath.h"
#include "platform/PathKey.h"
#include "run/RecordFile.h"
#include "saving/MarkedFile.h"
#include "saving/NewFile.h"

namespace tessarine
{

namespace
{

/// Hidden, and without an extension that any pattern for presentations takes.
const NativeString recordName = NativeName(".tessarine-backups");

/// A record has some hundred bytes for each backup; what is far longer isn't one, or not one that can be searched.
constexpr std::size_t longestRecord = std::size_t{64} << 20;

NativeString RecordNameOf(const std::string& owner)
{
    return recordName + NativeName("-" + owner);
}

bool ReadToEnd(NativeFile file, std::size_t limit, const std::function<void(std::span<const std::byte>)>& take)
{
    std::array<std::byte, 64 * 1024> buffer;
    for (std::size_t total = 0; total < limit;) {
        const auto count = ReadSome(file, total, buffer);
        if (!count)
            return false;
        if (*count == 0)
            return true;
        take(std::span(buffer).first(*count));
        total += *count;
    }
    return true;
}

std::string TextOf(NativeFile file)
{
    std::string text;
    ReadToEnd(file, longestRecord, [&](std::span<const std::byte> piece) {
        text.append(reinterpret_cast<const char*>(piece.data()), piece.size());
    });
    return text;
}

std::vector<std::string_view> LinesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        lines.push_back(text.substr(0, text.find('\n')));
        text.remove_prefix(std::min(text.size(), lines.back().size() + 1));
    }
    return lines;
}

/// Holds a record for one change. Waits for a moment only: whoever may read the file can lock it for as long as they
/// like.
class RecordLock
{
public:
    explicit RecordLock(NativeFile file) : file_(file)
    {
        constexpr int tries = 200;
        for (int done = 0; done < tries && !isHeld_; ++done) {
            const RecordLocking outcome = TryToLockRecord(file_);
            isHeld_ = outcome == RecordLocking::Locked;
            if (outcome == RecordLocking::Impossible)
                return;
            if (!isHeld_)
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }
    ~RecordLock()
    {
        if (isHeld_)
            UnlockRecord(file_);
    }
    RecordLock(const RecordLock&) = delete;
    RecordLock& operator=(const RecordLock&) = delete;

    bool IsHeld() const { return isHeld_; }

private:
    NativeFile file_;
    bool isHeld_ = false;
};

}  // namespace

class BackupFolder::OpenFiles
{
public:
    explicit OpenFiles(const NativeString& path) : folder(path) {}

    /// Of what stands under the name itself; nothing when nothing does.
    std::optional<FileFacts> Named(const NativeString& name, Look look = Look::WithoutOwner) const
    {
        return StatusIn(folder, name, look);
    }

    /// Whether the name still leads to the file that is open.
    bool Names(const NativeString& name, NativeFile file) const
    {
        const auto named = Named(name);
        const auto state = FileStateOf(file);
        return named && state && state->identity == named->state.identity;
    }

    HeldFolder folder;
    std::optional<FileDescriptor> record;  // open for new lines
    NativeString recordName;               // its name
};

struct BackupFolder::Line {
    RecordedBackup backup;
    std::string owner;    // of the record that it stands in
    NativeString record;  // name of that
};

/// The lines of all records in their order, found by what they name: folders may hold many thousand backups.
class BackupFolder::Lines
{
public:
    void Add(Line line)
    {
        byOriginal_[PathKey(line.backup.original)].push_back(all_.size());
        byName_[PathKey(line.backup.name)].push_back(all_.size());
        all_.push_back(std::move(line));
    }

    void Clear()
    {
        all_.clear();
        byOriginal_.clear();
        byName_.clear();
    }

    const std::vector<Line>& All() const { return all_; }
    const Line& operator[](std::size_t at) const { return all_[at]; }

    /// Indexes of the lines about backups of a file, and of those about a backup of that name.
    std::span<const std::size_t> Of(const Original& original) const { return Found(byOriginal_, original.name); }
    std::span<const std::size_t> Named(const String& name) const { return Found(byName_, name); }

private:
    using Index = std::unordered_map<String, std::vector<std::size_t>>;

    static std::span<const std::size_t> Found(const Index& index, const String& name)
    {
        const auto entry = index.find(PathKey(name));
        return entry == index.end() ? std::span<const std::size_t>() : entry->second;
    }

    std::vector<Line> all_;
    Index byOriginal_;  // by PathKey, as the other
    Index byName_;
};

struct BackupFolder::Source {
    NativeString name;
    std::optional<std::uint64_t> file;  // its number, nothing while it is missing
    std::uint64_t size = 0;             // when it was read
};

BackupFolder::BackupFolder(StringView folder)
    : folder_(folder), open_(std::make_unique<OpenFiles>(NativePath(folder))), lines_(std::make_unique<Lines>())
{
    if (!open_->folder.IsOpen())
        throw ClassicFileFailure(errno, "open", NativePath(folder));
    sources_.push_back({recordName, {}});
    Load(sources_.back());
    LoadRecordOf(OwnerOfNewFiles());
    LoadRecordOf(OwnerOfSuperuser());
}

BackupFolder::~BackupFolder() = default;

FileIdentity BackupFolder::Id() const
{
    const auto state = FileStateOf(open_->folder.get());
    if (!state)
        throw ClassicFileFailure(errno, "find", PathOf({}));
    return state->identity;
}

bool BackupFolder::Holds(const String& name, const FileIdentity& file) const
{
    const auto status = StatusThrough(open_->folder, NativePath(name));
    return status && status->state.identity == file;
}

BackupFolder::Original BackupFolder::OriginalAt(const String& path) const
{
    const StringView folder = FolderOf(StringView(path));
    Original original;
    // Only a name: the folder as a whole may be moved, and its record with it.
    original.name = PathKey(folder) == PathKey(folder_)
                        ? path.substr(folder.size())
                        : PathText(std::filesystem::absolute(NativePath(path)).native());
    if (const auto status = StatusAt(NativePath(path), Look::WithOwner))
        original.owner = status->owner;
    return original;
}

BackupFolder::State BackupFolder::StateOf(const String& name, const Original& original)
{
    const auto status = open_->Named(NativePath(name), Look::WithOwner);
    if (!status)
        return State::Missing;
    if (status->kind != FileKind::File)
        return State::NotAFile;
    if (!IsBelieved(status->owner, original))
        return State::NotRecorded;

    if (original.owner)
        LoadRecordOf(*original.owner);
    const auto isRecorded = [&] {
        return std::ranges::any_of(lines_->Of(original),
                                   [&](std::size_t at) { return Matches((*lines_)[at], name, original); });
    };
    // Another run may have made the backup since the record was read.
    if (!isRecorded())
        Refresh();
    if (!isRecorded()) {
        const bool isKnown = std::ranges::any_of(
            lines_->Named(name), [&](std::size_t at) { return IsBelieved((*lines_)[at].owner, original); });
        return isKnown ? State::OfAnother : State::NotRecorded;
    }

    const auto hasSize = [&](std::size_t at) {
        const Line& line = (*lines_)[at];
        return Matches(line, name, original) && line.backup.content.size == status->state.size;
    };
    if (std::ranges::none_of(lines_->Of(original), hasSize))
        return State::Changed;  // told without reading the file
    const auto content = ContentOf(name);
    return content && IsRecorded(name, original, *content) ? State::Intact : State::Changed;
}

std::vector<String> BackupFolder::NamesFor(const Original& original)
{
    if (original.owner)
        LoadRecordOf(*original.owner);
    std::vector<String> names;
    for (const std::size_t at : lines_->Of(original)) {
        const Line& line = (*lines_)[at];
        const bool isNew = std::ranges::find(names, PathKey(line.backup.name), PathKey) == names.end();
        if (isNew && Matches(line, line.backup.name, original))
            names.push_back(line.backup.name);
    }
    return names;
}

bool BackupFolder::IsRecorded(const String& name, const Original& original, const CopiedContent& content) const
{
    return std::ranges::any_of(lines_->Of(original), [&](std::size_t at) {
        const Line& line = (*lines_)[at];
        return Matches(line, name, original) && line.backup.content == content;
    });
}

bool BackupFolder::IsTaken(const String& name) const
{
    return open_->Named(NativePath(name)).has_value();
}

bool BackupFolder::IsSameFile(const String& name, const String& path) const
{
    const auto status = open_->Named(NativePath(name));
    const auto other = status ? StatusAt(NativePath(path)) : std::nullopt;
    return other && status->state.identity == other->state.identity;
}

bool BackupFolder::HasContentOf(const String& name, const String& path) const
{
    const NativeString native = NativePath(name);
    const FileDescriptor file = OpenRecordForReading(open_->folder, native);
    if (!file.IsOpen())
        throw ClassicFileFailure(errno, "open", PathOf(native));
    const FileDescriptor other = OpenForReading(NativePath(path));
    if (!other.IsOpen())
        throw ClassicFileFailure(errno, "open", NativePath(path));
    const auto state = FileStateOf(file.get());
    const auto otherState = FileStateOf(other.get());
    if (!state || !otherState || state->size != otherState->size)
        return false;

    // Checksums and not the bytes side by side: a read may give fewer bytes than were asked for.
    const auto content = ContentIn(file.get());
    return content && content == ContentIn(other.get());
}

/// Of a file, read to its end; nothing for a link, a folder or another thing that is no file.
std::optional<CopiedContent> BackupFolder::ContentOf(const String& name) const
{
    const NativeString native = NativePath(name);
    const FileDescriptor file = OpenRecordForReading(open_->folder, native);
    if (!file.IsOpen() && errno != ELOOP && errno != ENXIO)
        throw ClassicFileFailure(errno, "open", PathOf(native));
    const auto status = file.IsOpen() ? ::tessarine::StatusOf(file.get()) : std::nullopt;
    if (!status || status->kind != FileKind::File)
        return std::nullopt;

    const auto content = ContentIn(file.get());
    if (!content)
        throw ClassicFileFailure(errno, "read", PathOf(native));
    return content;
}

void BackupFolder::Record(const String& name, const Original& original, const CopiedContent& content)
{
    const RecordedBackup backup{name, original.name, content};
    // A clean of another process may delete the record between two looks at it; not many times in a row.
    for (int tries = 0; tries < 10; ++tries) {
        if (!open_->record && !OpenForAppending(recordName, original) &&
            !OpenForAppending(RecordNameOf(OwnerOfNewFiles()), original))
            throw ClassicFileFailure(errno, "write", PathOf(recordName));
        const RecordLock lock(open_->record->get());
        if (!lock.IsHeld())
            throw ClassicFileFailure(EBUSY, "write (another process holds it)", PathOf(open_->recordName));
        if (open_->Names(open_->recordName, open_->record->get()))
            return Append(backup);
        open_->record.reset();
    }
    throw ClassicFileFailure(EBUSY, "write", PathOf(recordName));
}

void BackupFolder::NarrowMode(const String& name, std::uint32_t mode) const
{
    const NativeString native = NativePath(name);
    const FileDescriptor file = OpenForMode(open_->folder, native);
    const auto status = file.IsOpen() ? ::tessarine::StatusOf(file.get()) : std::nullopt;
    if (!status)
        throw ClassicFileFailure(errno, "set the attributes of", PathOf(native));
    const std::uint32_t narrow = NarrowerMode(status->mode, mode);
    if (narrow == status->mode)
        return;
    const bool isOwn = status->kind == FileKind::File && status->names == 1;
    if (!isOwn || !PutMode(file.get(), narrow))
        throw ClassicFileFailure(isOwn ? errno : EACCES, "set the attributes of", PathOf(native));
}

void BackupFolder::Remove(const String& name)
{
    const NativeString native = NativePath(name);
    if (!DeleteIn(open_->folder, native))
        throw ClassicFileFailure(errno, "delete", PathOf(native));
    removed_.insert(PathKey(name));
}

void BackupFolder::NoteMissing(const Original& original)
{
    for (const String& name : NamesFor(original))
        if (!IsTaken(name))
            removed_.insert(PathKey(name));
}

void BackupFolder::ForgetRemoved()
{
    if (removed_.empty())
        return;
    for (const Source& source : sources_)
        ForgetIn(source);
    removed_.clear();
    lines_->Clear();
    for (Source& source : sources_)
        Load(source);
}

bool BackupFolder::IsBelieved(const std::string& owner, const Original& original) const
{
    return IsThisUser(owner) || IsSuperuser(owner) || owner == original.owner;
}

bool BackupFolder::Matches(const Line& line, const String& name, const Original& original) const
{
    return PathKey(line.backup.name) == PathKey(name) && PathKey(line.backup.original) == PathKey(original.name) &&
           IsBelieved(line.owner, original);
}

void BackupFolder::LoadRecordOf(const std::string& owner)
{
    const NativeString name = RecordNameOf(owner);
    if (std::ranges::find(sources_, name, &Source::name) != sources_.end())
        return;
    sources_.push_back({name, {}});
    Load(sources_.back());
}

void BackupFolder::Load(Source& source)
{
    const FileDescriptor file = OpenRecordForReading(open_->folder, source.name);
    const auto status = file.IsOpen() ? ::tessarine::StatusOf(file.get(), Look::WithOwner) : std::nullopt;
    source.file.reset();
    // No record, or nothing that could be one: no backup is known from it.
    if (!status || status->kind != FileKind::File)
        return;
    source.file = status->state.identity.file;
    const std::string text = TextOf(file.get());
    source.size = text.size();
    for (const std::string_view line : LinesOf(text))
        if (auto backup = RecordedBackupIn(line))
            lines_->Add({*std::move(backup), status->owner, source.name});
}

void BackupFolder::Refresh()
{
    const bool isCurrent = std::ranges::all_of(sources_, [&](const Source& source) {
        const auto status = open_->Named(source.name);
        if (!status || !source.file)
            return !status && !source.file;
        return status->state.identity.file == *source.file && status->state.size == source.size;
    });
    if (isCurrent)
        return;
    lines_->Clear();
    for (Source& source : sources_)
        Load(source);
}

bool BackupFolder::OpenForAppending(const NativeString& record, const Original& original)
{
    open_->record.emplace(OpenRecordForAppending(open_->folder, record));
    open_->recordName = record;
    const auto status =
        open_->record->IsOpen() ? ::tessarine::StatusOf(open_->record->get(), Look::WithOwner) : std::nullopt;
    if (status) {
        // A hard link would have another file of ours grow. A record of somebody else is not believed later.
        const bool isOwn = IsThisUser(status->owner) || status->owner == original.owner;
        if (status->kind == FileKind::File && status->names == 1 && isOwn)
            return true;
        errno = EACCES;
    }
    const int error = errno;
    open_->record.reset();
    errno = error;
    return false;
}

void BackupFolder::Append(const RecordedBackup& backup)
{
    const NativeFile record = open_->record->get();
    std::string text = LineOf(backup);
    const auto status = ::tessarine::StatusOf(record, Look::WithOwner);
    if (!status)
        throw ClassicFileFailure(errno, "write", PathOf(open_->recordName));
    const auto& [identity, size, lastWrite, lastChange] = status->state;
    std::array<char, 1> last{'\n'};
    // A full disk may have cut the line before.
    if (size > 0 && ReadSome(record, size - 1, std::as_writable_bytes(std::span(last))) == 1u && last[0] != '\n')
        text.insert(0, 1, '\n');
    // On the disk before the backup is: after a power cut nobody would know the backup again.
    if (!WriteAll(record, text) || !FlushContent(record))
        throw ClassicFileFailure(errno, "write", PathOf(open_->recordName));

    lines_->Add({backup, status->owner, open_->recordName});
    const auto source = std::ranges::find(sources_, open_->recordName, &Source::name);
    if (source == sources_.end())
        return;
    // Kept in step, so that a line of our own doesn't have the whole record read again.
    if (source->size == size && source->file.value_or(identity.file) == identity.file) {
        source->file = identity.file;
        source->size += text.size();
    }
}

void BackupFolder::ForgetIn(const Source& source)
{
    const FileDescriptor file = OpenRecordForReading(open_->folder, source.name);
    if (!file.IsOpen())
        return;
    const RecordLock lock(file.get());
    // A line too many does no harm, so whatever goes wrong here is passed over.
    if (!lock.IsHeld() || !open_->Names(source.name, file.get()))
        return;
    const auto status = ::tessarine::StatusOf(file.get());
    if (!status || status->kind != FileKind::File || status->state.size >= longestRecord)
        return;

    // The lines as they were known before their backups were removed. A line that a run has added since is about a
    // backup that it is just making.
    std::multiset<std::string> gone;
    for (const Line& line : lines_->All())
        if (line.record == source.name && removed_.contains(PathKey(line.backup.name)))
            gone.insert(LineOf(line.backup));
    const std::string text = TextOf(file.get());
    std::string rest;
    for (const std::string_view line : LinesOf(text)) {
        const std::string whole = std::string(line) + '\n';
        const auto known = gone.find(whole);
        if (known != gone.end())
            gone.erase(known);
        else if (RecordedBackupIn(line))
            rest += whole;
    }
    if (rest == text)
        return;
    if (rest.empty()) {
        static_cast<void>(DeleteIn(open_->folder, source.name));
        return;
    }
    // All or nothing here too.
    NewFile newFile(open_->folder);
    if (newFile.IsOpen() && newFile.Write(rest) && GiveOwnerAndMode(file.get(), newFile.Descriptor()) &&
        newFile.FlushToDisk())
        newFile.TakePlace(source.name);
}

NativeString BackupFolder::PathOf(const NativeString& name) const
{
    return NativePath(folder_) + name;
}

}  // namespace tessarine
