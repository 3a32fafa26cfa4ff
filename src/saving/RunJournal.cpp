#include "saving/RunJournal.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "files/FileFailure.h"
#include "log/Treatments.h"
#include "platform/NativePath.h"
#include "saving/JournalEntries.h"
#include "saving/JournalFile.h"
#include "saving/MarkedFile.h"

namespace tessarine
{

namespace
{

/// From the root on: the next start of the program stands in another folder. As journals have it.
std::string FullPath(const NativeString& path)
{
    std::error_code error;
    const auto full = std::filesystem::absolute(path, error);
    return ToUtf8(PathText(error ? path : full.native()));
}

/// The file that a run of this process is at, under a journal.
struct NotedFileState {
    std::unique_ptr<JournalFile> journal;  // made with the first file
    std::uint64_t device = 0;
    // The file itself, and those that have taken its place or were about to.
    std::vector<std::uint64_t> files;

    bool Holds(const std::optional<FileState>& state) const
    {
        return state && state->identity.device == device &&
               std::find(files.begin(), files.end(), state->identity.file) != files.end();
    }

    void AddContent(std::optional<FileMark> mark)
    {
        // What can't be noted is not put back: a run that saves must not fail for it.
        if (mark) {
            files.push_back(mark->file);
            static_cast<void>(journal->Append(JournalLine(ContentEntry{*mark}.Fields())));
        }
    }
};

/// Borrowed from the journal that has begun an entry: what saves a file knows of no run.
NotedFileState* noted = nullptr;

/// Nothing leaves the reason in errno.
std::optional<WriteEntry> EntryOf(const NativeString& target, NativeFile oldFile, const NativeString& copy,
                                  const NativeString& laterCopy)
{
    const FileDescriptor complete = OpenCopy(copy);
    if (!complete.IsOpen())
        return std::nullopt;
    const auto mark = MarkOf(oldFile);
    const auto copyMark = MarkOf(complete.get());
    auto oldBlocks = ReadBlocks(oldFile);
    auto newBlocks = ReadBlocks(complete.get());
    if (!mark || !copyMark || !oldBlocks || !newBlocks)
        return std::nullopt;
    return WriteEntry{FullPath(target),     *mark, FullPath(laterCopy), *copyMark, *std::move(oldBlocks),
                      *std::move(newBlocks)};
}

}  // namespace

class RunJournal::NotedFile : public NotedFileState
{
};

RunJournal::RunJournal() : noted_(std::make_unique<NotedFile>()) {}

RunJournal::~RunJournal()
{
    End();
    if (noted_->journal)
        noted_->journal->Remove();
}

void RunJournal::Begin(StringView path, const FileAttributes& attributes, const FileTimes& times)
{
    End();
    const NativeString native = NativePath(path);
    std::uint64_t device = 0;
    FileEntry entry{FullPath(native), {}, attributes.mode, {}};
    if (!LookAt(native, device, entry.mark))
        throw ClassicFileFailure(errno, "find", native);
    if (times.valid)
        entry.dates = DatesOf(times);
    if (!noted_->journal)
        noted_->journal = JournalFile::Make();
    if (!noted_->journal || !noted_->journal->Put(JournalLine(entry.Fields())))
        throw ClassicFileFailure(errno, "note in the data folder the attributes of", native);
    noted_->device = device;
    noted_->files = {entry.mark.file};
    noted = noted_.get();
}

void RunJournal::End() noexcept
{
    if (noted != noted_.get())
        return;
    noted = nullptr;
    // An entry that can't be taken out is harmless: it is for the file as it was, which the next start finds right.
    static_cast<void>(noted_->journal->Put({}));
}

void NoteReplacement(const NativeString& target, NativeFile newFile) noexcept
{
    if (noted == nullptr)
        return;
    Skip([&] {
        const auto old = StatusAt(target);
        if (old && noted->Holds(old->state))
            noted->AddContent(MarkOf(newFile));
    });
}

void NoteNewDate(NativeFile file, const timespec& lastWrite) noexcept
{
    if (noted == nullptr)
        return;
    Skip([&] {
        const auto state = FileStateOf(file);
        if (noted->Holds(state))
            noted->AddContent(FileMark{state->identity.file, state->size, lastWrite});
    });
}

InPlaceWrite::InPlaceWrite(const NativeString& target, NativeFile oldFile, const NativeString& copy)
    : copy_(copy + NativeName(".copy")), oldFile_(oldFile), journal_(JournalFile::Make())
{
    const auto entry = journal_ ? EntryOf(target, oldFile, copy, copy_) : std::nullopt;
    if (!entry || !journal_->Put(JournalLine(entry->Fields())) || !journal_->FlushToDisk() ||
        !RenameFile(copy, copy_)) {
        const int error = errno;
        if (journal_)
            journal_->Remove();
        throw SystemFileFailure(error, "save (the write into the file can't be noted in the data folder)", target);
    }
    // After a power cut the copy has to have the name that was noted.
    FlushFolderOf(copy_);
}

InPlaceWrite::~InPlaceWrite() = default;

const NativeString& InPlaceWrite::Copy() const
{
    return copy_;
}

void InPlaceWrite::End() noexcept
{
    if (!journal_)
        return;
    // First the mode and dates that are to come back: without the journal of the write nobody would know this content.
    Skip([&] {
        if (noted != nullptr && noted->Holds(FileStateOf(oldFile_)))
            noted->AddContent(MarkOf(oldFile_));
    });
    RemoveFile(copy_);
    journal_->Remove();
    journal_.reset();
}

}  // namespace tessarine
