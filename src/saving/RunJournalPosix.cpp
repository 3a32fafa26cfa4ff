#include "saving/RunJournal.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <utility>

#include "files/FileDescriptor.h"
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

/// From the root on: the next start of the program stands in another folder.
std::string FullPath(const std::string& path)
{
    std::error_code error;
    const auto full = std::filesystem::absolute(path, error);
    return error ? path : full.string();
}

/// The file that a run of this process is at, under a journal.
struct NotedFileState {
    std::unique_ptr<JournalFile> journal;  // made with the first file
    dev_t device = 0;
    // The file itself, and those that have taken its place or were about to.
    std::vector<std::uint64_t> files;

    bool Holds(const struct stat& status) const
    {
        return status.st_dev == device && std::find(files.begin(), files.end(), status.st_ino) != files.end();
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
std::optional<WriteEntry> EntryOf(const std::string& target, int oldFile, const std::string& copy,
                                  const std::string& laterCopy)
{
    const FileDescriptor complete(open(copy.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
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
    const std::string nativePath = NativePath(path);
    struct stat status = {};
    if (stat(nativePath.c_str(), &status) != 0)
        throw ClassicFileFailure(errno, "find", nativePath);
    FileEntry entry{FullPath(nativePath),
                    {status.st_ino, static_cast<std::uint64_t>(status.st_size), status.st_mtim},
                    attributes.mode,
                    {}};
    if (times.valid)
        entry.dates = {times.lastAccess, times.lastWrite};
    if (!noted_->journal)
        noted_->journal = JournalFile::Make();
    if (!noted_->journal || !noted_->journal->Put(JournalLine(entry.Fields())))
        throw ClassicFileFailure(errno, "note in the data folder the attributes of", nativePath);
    noted_->device = status.st_dev;
    noted_->files = {status.st_ino};
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

void NoteReplacement(const std::string& target, int newFile) noexcept
{
    if (noted == nullptr)
        return;
    struct stat old = {};
    if (stat(target.c_str(), &old) == 0 && noted->Holds(old))
        Skip([&] { noted->AddContent(MarkOf(newFile)); });
}

void NoteNewDate(int file, const timespec& lastWrite) noexcept
{
    struct stat status = {};
    if (noted != nullptr && fstat(file, &status) == 0 && noted->Holds(status))
        Skip([&] {
            noted->AddContent(FileMark{status.st_ino, static_cast<std::uint64_t>(status.st_size), lastWrite});
        });
}

InPlaceWrite::InPlaceWrite(const std::string& target, int oldFile, const std::string& copy)
    : copy_(copy + ".copy"), oldFile_(oldFile), journal_(JournalFile::Make())
{
    const auto entry = journal_ ? EntryOf(target, oldFile, copy, copy_) : std::nullopt;
    if (!entry || !journal_->Put(JournalLine(entry->Fields())) || !journal_->FlushToDisk() ||
        std::rename(copy.c_str(), copy_.c_str()) != 0) {
        const int error = errno;
        if (journal_)
            journal_->Remove();
        throw SystemFileFailure(error, "save (the write into the file can't be noted in the data folder)", target);
    }
    // After a power cut the copy has to have the name that was noted.
    FlushFolderOf(copy_);
}

InPlaceWrite::~InPlaceWrite() = default;

const std::string& InPlaceWrite::Copy() const
{
    return copy_;
}

void InPlaceWrite::End() noexcept
{
    if (!journal_)
        return;
    struct stat status = {};
    // First the mode and dates that are to come back: without the journal of the write nobody would know this content.
    if (noted != nullptr && fstat(oldFile_, &status) == 0 && noted->Holds(status))
        Skip([&] { noted->AddContent(MarkOf(oldFile_)); });
    unlink(copy_.c_str());
    journal_->Remove();
    journal_.reset();
}

}  // namespace tessarine
