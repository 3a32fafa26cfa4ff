#include "files/RandomAccessFile.h"

#include <cerrno>
#include <limits>

#include "files/FileFailure.h"
#include "files/FileLock.h"
#include "files/OpenForReading.h"
#include "files/ReadAt.h"
#include "platform/Failure.h"

namespace tessarine
{

RandomAccessFile::RandomAccessFile(StringView path, Use use)
    : path_(NativePath(path)), file_(OpenForReading(path_, AccessTime::StaysWherePossible))
{
    if (!file_.IsOpen())
        throw SystemFileFailure(errno, "open", path_);
    // By a clock that is far ahead no file is racy.
    const std::int64_t clock = use == Use::Saving ? OpenedFile::Clock() : std::numeric_limits<std::int64_t>::max();
    const auto status = StatusOf(file_.get());
    if (!status)
        throw SystemFileFailure(errno, "read the size of", path_);
    // The error decides the failure's number: a folder or pipe is "not permitted", a locked file is "in use".
    if (status->kind != FileKind::File)
        throw SystemFileFailure(EACCES, "read (it is not a file)", path_);
    const FileState& state = status->state;
    if (FileLock::IsOnAnother(path, state.identity))
        throw SystemFileFailure(FileTrouble::InUse, "open", path_,
                                "it was changed by another program: another file is in its place; run it again");
    const LockAttempt locks = LookAtLocks(file_.get(), state.identity);
    if (locks == LockAttempt::HeldByARun)
        throw SystemFileFailure(ETXTBSY, "open (it is in use by another run)", path_);
    if (locks == LockAttempt::HeldByAProgram)
        throw SystemFileFailure(ETXTBSY, "open (another program has locked it)", path_);
    size_ = state.size;
    opened_.emplace(file_.get(), state, clock);
}

std::optional<RandomAccessFile::Identity> RandomAccessFile::IdOf(StringView path)
{
    const auto state = FileStateOf(path);
    return state ? std::optional(state->identity) : std::nullopt;
}

void RandomAccessFile::Read(std::uint64_t offset, std::span<std::byte> buffer) const
{
    const auto length = ReadAt(file_.get(), offset, buffer);
    if (!length)
        throw SystemFileFailure(errno, "read", path_);
    // Another program has cut the file since it was opened.
    if (*length < buffer.size())
        throw Failure(FailureNumber::FileCorrupt, u"The file ends too early: " + PathText(path_));
}

}  // namespace tessarine
