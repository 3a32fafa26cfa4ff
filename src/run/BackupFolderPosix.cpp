#include "run/BackupFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

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

#include "files/FileDescriptor.h"
#include "files/FileFailure.h"
#include "files/WriteAll.h"
#include "platform/Crc32.h"
#include "platform/FolderOf.h"
#include "platform/NativePath.h"
#include "saving/NewFile.h"

namespace tessarine
{

namespace
{

using Status = struct stat;

/// Hidden, and without an extension that any pattern for presentations takes.
const std::string recordName = ".tessarine-backups";

/// A record has some hundred bytes for each backup; what is far longer isn't one, or not one that can be searched.
constexpr std::size_t longestRecord = std::size_t{64} << 20;

constexpr int readFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;

std::string RecordNameOf(std::uint32_t owner)
{
    return recordName + "-" + std::to_string(owner);
}

bool ReadToEnd(int file, std::size_t limit, const std::function<void(std::span<const std::byte>)>& take)
{
    std::array<std::byte, 64 * 1024> buffer;
    for (std::size_t total = 0; total < limit;) {
        const ssize_t count = read(file, buffer.data(), buffer.size());
        if (count == 0)
            return true;
        if (count < 0 && errno != EINTR)
            return false;
        if (count > 0) {
            take(std::span(buffer).first(static_cast<std::size_t>(count)));
            total += static_cast<std::size_t>(count);
        }
    }
    return true;
}

std::string TextOf(int file)
{
    std::string text;
    ReadToEnd(file, longestRecord, [&](std::span<const std::byte> piece) {
        text.append(reinterpret_cast<const char*>(piece.data()), piece.size());
    });
    return text;
}

/// Nothing when it can't be read; errno tells why.
std::optional<CopiedContent> ContentIn(int file)
{
    CopiedContent content;
    const bool isRead = ReadToEnd(file, SIZE_MAX, [&](std::span<const std::byte> piece) {
        content.size += piece.size();
        content.checksum = Crc32(piece, content.checksum);
    });
    return isRead ? std::optional(content) : std::nullopt;
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
    explicit RecordLock(int file) : file_(file)
    {
        constexpr int tries = 200;
        for (int done = 0; done < tries && !isHeld_; ++done) {
            isHeld_ = flock(file_, LOCK_EX | LOCK_NB) == 0;
            if (!isHeld_ && errno != EWOULDBLOCK && errno != EINTR)
                return;
            if (!isHeld_)
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }
    ~RecordLock()
    {
        if (isHeld_)
            flock(file_, LOCK_UN);
    }
    RecordLock(const RecordLock&) = delete;
    RecordLock& operator=(const RecordLock&) = delete;

    bool IsHeld() const { return isHeld_; }

private:
    int file_;
    bool isHeld_ = false;
};

}  // namespace

class BackupFolder::Descriptors
{
public:
    explicit Descriptors(const std::string& path)
        : folder(open(path.empty() ? "." : path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
    }

    /// Of what stands under the name itself; nothing when nothing does.
    std::optional<Status> StatusOf(const std::string& name) const
    {
        Status status = {};
        if (fstatat(folder.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0)
            return status;
        return std::nullopt;
    }

    /// Whether the name still leads to the file that is open.
    bool Names(const std::string& name, int file) const
    {
        Status status = {};
        const auto named = StatusOf(name);
        return named && fstat(file, &status) == 0 && status.st_dev == named->st_dev && status.st_ino == named->st_ino;
    }

    FileDescriptor folder;
    std::optional<FileDescriptor> record;  // open for new lines
    std::string recordName;                // its name
};

struct BackupFolder::Line {
    RecordedBackup backup;
    std::uint32_t owner;  // of the record that it stands in
    std::string record;   // name of that
};

/// The lines of all records in their order, found by what they name: folders may hold many thousand backups.
class BackupFolder::Lines
{
public:
    void Add(Line line)
    {
        byOriginal_[line.backup.original].push_back(all_.size());
        byName_[line.backup.name].push_back(all_.size());
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

    static std::span<const std::size_t> Found(const Index& index, const String& key)
    {
        const auto entry = index.find(key);
        return entry == index.end() ? std::span<const std::size_t>() : entry->second;
    }

    std::vector<Line> all_;
    Index byOriginal_;
    Index byName_;
};

struct BackupFolder::Source {
    std::string name;
    std::optional<std::uint64_t> file;  // its number, nothing while it is missing
    std::uint64_t size = 0;             // when it was read
};

BackupFolder::BackupFolder(StringView folder)
    : folder_(folder), open_(std::make_unique<Descriptors>(NativePath(folder))), lines_(std::make_unique<Lines>())
{
    if (!open_->folder.IsOpen())
        throw ClassicFileFailure(errno, "open", NativePath(folder));
    sources_.push_back({recordName, {}});
    Load(sources_.back());
    LoadRecordOf(geteuid());
    LoadRecordOf(0);
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
    Status status = {};
    return fstatat(open_->folder.get(), NativePath(name).c_str(), &status, 0) == 0 &&
           StateFrom(status).identity == file;
}

BackupFolder::Original BackupFolder::OriginalAt(const String& path) const
{
    const StringView folder = FolderOf(StringView(path));
    Original original;
    // Only a name: the folder as a whole may be moved, and its record with it.
    original.name =
        folder == folder_ ? path.substr(folder.size()) : FromUtf8(std::filesystem::absolute(NativePath(path)).string());
    Status status = {};
    if (stat(NativePath(path).c_str(), &status) == 0)
        original.owner = status.st_uid;
    return original;
}

BackupFolder::State BackupFolder::StateOf(const String& name, const Original& original)
{
    const auto status = open_->StatusOf(NativePath(name));
    if (!status)
        return State::Missing;
    if (!S_ISREG(status->st_mode))
        return State::NotAFile;
    if (!IsBelieved(status->st_uid, original))
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
        return Matches(line, name, original) && line.backup.content.size == static_cast<std::uint64_t>(status->st_size);
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
        if (Matches(line, line.backup.name, original) && std::ranges::find(names, line.backup.name) == names.end())
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
    return open_->StatusOf(NativePath(name)).has_value();
}

bool BackupFolder::IsSameFile(const String& name, const String& path) const
{
    const auto status = open_->StatusOf(NativePath(name));
    Status other = {};
    return status && stat(NativePath(path).c_str(), &other) == 0 && status->st_dev == other.st_dev &&
           status->st_ino == other.st_ino;
}

bool BackupFolder::HasContentOf(const String& name, const String& path) const
{
    const std::string native = NativePath(name);
    const FileDescriptor file(openat(open_->folder.get(), native.c_str(), readFlags));
    if (!file.IsOpen())
        throw ClassicFileFailure(errno, "open", PathOf(native));
    const FileDescriptor other(open(NativePath(path).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!other.IsOpen())
        throw ClassicFileFailure(errno, "open", NativePath(path));
    Status status = {};
    Status otherStatus = {};
    if (fstat(file.get(), &status) != 0 || fstat(other.get(), &otherStatus) != 0 ||
        status.st_size != otherStatus.st_size)
        return false;

    // Checksums and not the bytes side by side: a read may give fewer bytes than were asked for.
    const auto content = ContentIn(file.get());
    return content && content == ContentIn(other.get());
}

/// Of a file, read to its end; nothing for a link, a folder or another thing that is no file.
std::optional<CopiedContent> BackupFolder::ContentOf(const String& name) const
{
    const std::string native = NativePath(name);
    const FileDescriptor file(openat(open_->folder.get(), native.c_str(), readFlags));
    Status status = {};
    if (!file.IsOpen() && errno != ELOOP && errno != ENXIO)
        throw ClassicFileFailure(errno, "open", PathOf(native));
    if (!file.IsOpen() || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
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
            !OpenForAppending(RecordNameOf(geteuid()), original))
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
    const std::string native = NativePath(name);
    const FileDescriptor file(openat(open_->folder.get(), native.c_str(), readFlags));
    Status status = {};
    if (!file.IsOpen() || fstat(file.get(), &status) != 0)
        throw ClassicFileFailure(errno, "set the attributes of", PathOf(native));
    const mode_t present = status.st_mode & 07777;
    const mode_t narrow = present & static_cast<mode_t>(mode);
    if (narrow == present)
        return;
    const bool isOwn = S_ISREG(status.st_mode) && status.st_nlink == 1;
    if (!isOwn || fchmod(file.get(), narrow) != 0)
        throw ClassicFileFailure(isOwn ? errno : EACCES, "set the attributes of", PathOf(native));
}

void BackupFolder::Remove(const String& name)
{
    const std::string native = NativePath(name);
    if (unlinkat(open_->folder.get(), native.c_str(), 0) != 0)
        throw ClassicFileFailure(errno, "delete", PathOf(native));
    removed_.insert(name);
}

void BackupFolder::NoteMissing(const Original& original)
{
    for (const String& name : NamesFor(original))
        if (!IsTaken(name))
            removed_.insert(name);
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

bool BackupFolder::IsBelieved(std::uint32_t owner, const Original& original) const
{
    return owner == geteuid() || owner == 0 || owner == original.owner;
}

bool BackupFolder::Matches(const Line& line, const String& name, const Original& original) const
{
    return line.backup.name == name && line.backup.original == original.name && IsBelieved(line.owner, original);
}

void BackupFolder::LoadRecordOf(std::uint32_t owner)
{
    const std::string name = RecordNameOf(owner);
    if (std::ranges::find(sources_, name, &Source::name) != sources_.end())
        return;
    sources_.push_back({name, {}});
    Load(sources_.back());
}

void BackupFolder::Load(Source& source)
{
    const FileDescriptor file(openat(open_->folder.get(), source.name.c_str(), readFlags));
    Status status = {};
    source.file.reset();
    // No record, or nothing that could be one: no backup is known from it.
    if (!file.IsOpen() || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return;
    source.file = status.st_ino;
    const std::string text = TextOf(file.get());
    source.size = text.size();
    for (const std::string_view line : LinesOf(text))
        if (auto backup = RecordedBackupIn(line))
            lines_->Add({*std::move(backup), status.st_uid, source.name});
}

void BackupFolder::Refresh()
{
    const bool isCurrent = std::ranges::all_of(sources_, [&](const Source& source) {
        const auto status = open_->StatusOf(source.name);
        if (!status || !source.file)
            return !status && !source.file;
        return status->st_ino == *source.file && static_cast<std::uint64_t>(status->st_size) == source.size;
    });
    if (isCurrent)
        return;
    lines_->Clear();
    for (Source& source : sources_)
        Load(source);
}

bool BackupFolder::OpenForAppending(const std::string& record, const Original& original)
{
    constexpr int flags = O_RDWR | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    open_->record.emplace(openat(open_->folder.get(), record.c_str(), flags, 0644));
    open_->recordName = record;
    Status status = {};
    if (open_->record->IsOpen() && fstat(open_->record->get(), &status) == 0) {
        // A hard link would have another file of ours grow. A record of somebody else is not believed later.
        const bool isOwn = status.st_uid == geteuid() || status.st_uid == original.owner;
        if (S_ISREG(status.st_mode) && status.st_nlink == 1 && isOwn)
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
    const int record = open_->record->get();
    std::string text = LineOf(backup);
    Status status = {};
    if (fstat(record, &status) != 0)
        throw ClassicFileFailure(errno, "write", PathOf(open_->recordName));
    char last = '\n';
    // A full disk may have cut the line before.
    if (status.st_size > 0 && pread(record, &last, 1, status.st_size - 1) == 1 && last != '\n')
        text.insert(0, 1, '\n');
    // On the disk before the backup is: after a power cut nobody would know the backup again.
    if (!WriteAll(record, text) || fdatasync(record) != 0)
        throw ClassicFileFailure(errno, "write", PathOf(open_->recordName));

    lines_->Add({backup, status.st_uid, open_->recordName});
    const auto source = std::ranges::find(sources_, open_->recordName, &Source::name);
    if (source == sources_.end())
        return;
    // Kept in step, so that a line of our own doesn't have the whole record read again.
    const bool isKnown = source->size == static_cast<std::uint64_t>(status.st_size);
    if (isKnown && source->file.value_or(status.st_ino) == status.st_ino) {
        source->file = status.st_ino;
        source->size += text.size();
    }
}

void BackupFolder::ForgetIn(const Source& source)
{
    const int folder = open_->folder.get();
    const FileDescriptor file(openat(folder, source.name.c_str(), readFlags));
    if (!file.IsOpen())
        return;
    const RecordLock lock(file.get());
    Status status = {};
    // A line too many does no harm, so whatever goes wrong here is passed over.
    if (!lock.IsHeld() || !open_->Names(source.name, file.get()) || fstat(file.get(), &status) != 0 ||
        !S_ISREG(status.st_mode) || status.st_size >= static_cast<off_t>(longestRecord))
        return;

    // The lines as they were known before their backups were removed. A line that a run has added since is about a
    // backup that it is just making.
    std::multiset<std::string> gone;
    for (const Line& line : lines_->All())
        if (line.record == source.name && removed_.contains(line.backup.name))
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
        unlinkat(folder, source.name.c_str(), 0);
        return;
    }
    // All or nothing here too.
    NewFile newFile(folder);
    if (newFile.IsOpen() && newFile.Write(rest) && fchown(newFile.Descriptor(), status.st_uid, status.st_gid) == 0 &&
        fchmod(newFile.Descriptor(), status.st_mode & 07777) == 0 && newFile.FlushToDisk())
        newFile.TakePlace(source.name);
}

std::string BackupFolder::PathOf(const std::string& name) const
{
    return ToUtf8(folder_) + name;
}

}  // namespace tessarine
