#include <algorithm>
#include <cerrno>
#include <optional>
#include <string>

#include "files/FileFailure.h"
#include "files/FileLock.h"
#include "files/ReadAt.h"
#include "files/SystemErrors.h"
#include "log/ErrorLog.h"
#include "saving/HalfWrittenFile.h"
#include "saving/JournalFile.h"
#include "saving/Leftovers.h"
#include "saving/MarkedFile.h"
#include "saving/RunJournal.h"
#include "saving/WriteOver.h"

namespace tessarine
{

namespace
{

/// What becomes of a journal after a look at its file.
enum class Outcome { Settled, TryAgain };

struct Recovery {
    std::vector<RecoveredFile> files;
    std::vector<FileMark> completed;  // contents that half-written files were given

    void Tell(const std::string& path, const std::string& text) { files.push_back({FromUtf8(path), FromUtf8(text)}); }
};

bool Equal(const timespec& a, const timespec& b)
{
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

/// Whether the file is one that the journal knows. One that has its old date back already is known by the rest.
bool IsKnown(FileMark mark, const FileEntry& entry, const std::vector<FileMark>& contents)
{
    const auto isContent = [&](const FileMark& content) {
        return content.file == mark.file && content.size == mark.size &&
               (Equal(content.lastWrite, mark.lastWrite) ||
                (entry.dates && Equal(entry.dates->lastWrite, mark.lastWrite)));
    };
    return mark == entry.mark || std::any_of(contents.begin(), contents.end(), isContent);
}

/// Mode and dates of the file that a run was at.
void RecoverFile(const FileEntry& entry, const std::vector<FileMark>& contents, Recovery& recovery)
{
    const FileDescriptor file = OpenToPutBack(NativePath(FromUtf8(entry.path)));
    const auto mark = file.IsOpen() ? MarkOf(file.get()) : std::nullopt;
    const auto status = mark ? StatusOf(file.get()) : std::nullopt;
    if (!status) {
        // A file that is gone needs nothing any more.
        if (errno != ENOENT && errno != ENOTDIR)
            recovery.Tell(entry.path,
                          "a run that was killed may have left it writable or with a new date, and it can't be opened "
                          "now: " +
                              ErrorText(errno));
        return;
    }
    const bool hasMode = status->mode == entry.mode;
    const bool hasDates = !entry.dates || Equal(entry.dates->lastWrite, mark->lastWrite);
    if (hasMode && hasDates)
        return;
    if (status->kind != FileKind::File || !IsKnown(*mark, entry, contents)) {
        recovery.Tell(entry.path,
                      "a run that was killed may have left it writable or with a new date; it has been "
                      "changed since, so it stays as it is");
        return;
    }

    if (!hasDates && !PutDates(file.get(), entry.dates->lastAccess, entry.dates->lastWrite)) {
        recovery.Tell(entry.path,
                      "a run that was killed had left it with a new date, and the old one can't be put back: " +
                          ErrorText(errno));
        return;
    }
    // Any other mode was set by somebody since, who may have wanted it narrower.
    const bool isModeOfRun = IsModeOfRun(status->mode, entry.mode);
    if (!hasMode && isModeOfRun && !PutMode(file.get(), entry.mode)) {
        recovery.Tell(entry.path, "a run that was killed had left it writable, and its old mode can't be put back: " +
                                      ErrorText(errno));
        return;
    }
    if (!hasMode && isModeOfRun && !hasDates)
        recovery.Tell(
            entry.path,
            "a run that was killed had left it writable and with a new date; its mode and dates are put back");
    else if (!hasMode && isModeOfRun)
        recovery.Tell(entry.path, "a run that was killed had left it writable; its mode is put back");
    else if (!hasDates)
        recovery.Tell(entry.path, "a run that was killed had left it with a new date; its dates are put back");
}

/// A reader of an open file, which raises when the file can't be read.
BlockReader ReaderOf(const FileDescriptor& file, const NativeString& path)
{
    return [&file, &path](std::uint64_t offset, std::span<std::byte> buffer) {
        if (const auto length = ReadAt(file.get(), offset, buffer))
            return *length;
        throw SystemFileFailure(errno, "read", path);
    };
}

/// Without its copy a write can't be completed, but it may have come to its end, or not have begun.
bool IsOldOrNew(const WriteEntry& entry, NativeFile file)
{
    const auto mark = MarkOf(file);
    const auto blocks = ReadBlocks(file);
    return mark && blocks &&
           ((mark->size == entry.mark.size && *blocks == entry.oldBlocks) ||
            (mark->size == entry.copyMark.size && *blocks == entry.newBlocks));
}

/// A write into a file itself. The copy goes once nobody needs it; in doubt it stays, and the text names it. Raises
/// when the next start is to try again.
void RecoverWrite(const WriteEntry& entry, Recovery& recovery)
{
    const NativeString path = NativePath(FromUtf8(entry.path));
    const NativeString copyPath = NativePath(FromUtf8(entry.copy));
    const FileDescriptor file = OpenToComplete(path);
    const int error = errno;
    const FileDescriptor copy = OpenCopy(copyPath);
    const auto copyMark = copy.IsOpen() ? MarkOf(copy.get()) : std::nullopt;
    if (!copyMark || !(*copyMark == entry.copyMark) || !IsOwnFile(copy.get())) {
        if (!file.IsOpen() || !IsOldOrNew(entry, file.get()))
            recovery.Tell(entry.path,
                          "a run that was killed may have left it half written, and the copy of its new content is "
                          "gone or changed: " +
                              entry.copy);
        return;
    }
    const std::string keptCopy = "; its complete new content is kept in " + entry.copy;
    const auto mark = file.IsOpen() ? MarkOf(file.get()) : std::nullopt;
    if (!mark) {
        recovery.Tell(entry.path, "a run that was killed may have left it half written, and it can't be opened now (" +
                                      ErrorText(error) + ")" + keptCopy);
        return;
    }
    const BlockReader newContent = ReaderOf(copy, copyPath);
    const WriteProgress progress = mark->file == entry.mark.file
                                       ? ProgressOfWrite(entry, ReaderOf(file, path), mark->size, newContent)
                                       : WriteProgress::Unrelated;
    if (progress == WriteProgress::Unrelated) {
        recovery.Tell(entry.path,
                      "a run that was killed may have left it half written, and it has been changed since" + keptCopy);
        return;
    }
    if (progress == WriteProgress::HalfDone) {
        if (!WriteOver(file.get(), copy.get(), copyMark->size))
            throw SystemFileFailure(errno, "complete", path);
        recovery.Tell(entry.path, "a run that was killed had left it half written; the write is completed");
    }
    if (const auto completed = MarkOf(file.get()))
        recovery.completed.push_back(*completed);
    RemoveFile(copyPath);
}

/// Keeps others from a file while it is put right, unless the run that asks for it holds the file already.
class LockOfRecovery
{
public:
    explicit LockOfRecovery(const std::string& path)
    {
        const auto state = FileStateOf(FromUtf8(path));
        if (!state || !FileLock::IsHeldHere(state->identity))
            lock_.emplace(FromUtf8(path));
    }

private:
    std::optional<FileLock> lock_;
};

/// The journal of a write. Gives what is to become of the journal.
Outcome RecoverWrites(const std::vector<JournalFields>& lines, Recovery& recovery)
{
    const auto entry = lines.empty() ? std::nullopt : WriteEntry::From(lines.front());
    if (!entry)
        return Outcome::Settled;
    try {
        const LockOfRecovery lock(entry->path);
        RecoverWrite(*entry, recovery);
        return Outcome::Settled;
    } catch (...) {
        recovery.Tell(entry->path, "a run that was killed had left it half written; the next start tries again: " +
                                       ToUtf8(CurrentFailure().Reason()));
        return Outcome::TryAgain;
    }
}

/// The journal of the file that a run was at: the file, then its contents.
Outcome RecoverFiles(const std::vector<JournalFields>& lines, Recovery& recovery)
{
    const auto entry = lines.empty() ? std::nullopt : FileEntry::From(lines.front());
    if (!entry)
        return Outcome::Settled;
    // A file that was written into itself and completed just now has a content that its own journal doesn't know.
    std::vector<FileMark> contents = recovery.completed;
    for (std::size_t i = 1; i < lines.size(); ++i)
        if (const auto content = ContentEntry::From(lines[i]))
            contents.push_back(content->mark);
    try {
        const LockOfRecovery lock(entry->path);
        RecoverFile(*entry, contents, recovery);
        return Outcome::Settled;
    } catch (...) {
        // Whoever has it in use would be disturbed, and may be about to change it.
        return Outcome::TryAgain;
    }
}

}  // namespace

std::vector<RecoveredFile> RecoverFromKilledRuns()
{
    const std::vector<RecoveredFile> files = RecoverFromRunsKilledMeanwhile();
    // Where a save into a file itself makes its new content when the file's own folder is closed.
    if (!ApplicationDataFolder.empty())
        RemoveLeftovers(ApplicationDataFolder);
    return files;
}

std::vector<RecoveredFile> RecoverFromRunsKilledMeanwhile()
{
    Recovery recovery;
    try {
        struct Found {
            std::unique_ptr<JournalFile> file;
            std::vector<JournalFields> lines;
        };
        std::vector<Found> journals;
        for (auto& file : JournalFile::Abandoned()) {
            auto lines = ReadJournal(file->Content().value_or(std::string()));
            journals.push_back({std::move(file), std::move(lines)});
        }
        // Writes first: only then is it known which content belongs to the file whose dates are to come back.
        std::vector<Outcome> outcomes;
        for (const Found& journal : journals)
            outcomes.push_back(RecoverWrites(journal.lines, recovery));
        for (std::size_t i = 0; i < journals.size(); ++i)
            if (outcomes[i] == Outcome::Settled && RecoverFiles(journals[i].lines, recovery) == Outcome::Settled)
                journals[i].file->Remove();
    } catch (...) {
        // Out of memory: the journals stay for the next start.
    }
    return recovery.files;
}

}  // namespace tessarine
