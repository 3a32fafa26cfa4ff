#include "files/RandomAccessFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <limits>

#include "files/FileFailure.h"
#include "files/FileLock.h"
#include "platform/Failure.h"
#include "platform/NativePath.h"

namespace tessarine
{

namespace
{

FileDescriptor OpenForReading(const std::string& path)
{
    // O_NONBLOCK keeps a named pipe from holding up a run; O_NOATIME is refused for files of other owners.
    constexpr int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK;
    FileDescriptor file(open(path.c_str(), flags | O_NOATIME));
    if (!file.IsOpen() && errno == EPERM)
        file = FileDescriptor(open(path.c_str(), flags));
    return file;
}

}  // namespace

RandomAccessFile::RandomAccessFile(StringView path, Use use) : path_(NativePath(path)), file_(OpenForReading(path_))
{
    if (!file_.IsOpen())
        throw SystemFileFailure(errno, "open", path_);
    // By a clock that is far ahead no file is racy.
    const std::int64_t clock = use == Use::Saving ? OpenedFile::Clock() : std::numeric_limits<std::int64_t>::max();
    struct stat status = {};
    if (fstat(file_.get(), &status) != 0)
        throw SystemFileFailure(errno, "read the size of", path_);
    // The error decides the failure's number: a folder or pipe is "not permitted", a locked file is "in use".
    if (!S_ISREG(status.st_mode))
        throw SystemFileFailure(EACCES, "read (it is not a file)", path_);
    const FileState state = StateFrom(status);
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
    while (!buffer.empty()) {
        const ssize_t count = pread(file_.get(), buffer.data(), buffer.size(), static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw SystemFileFailure(errno, "read", path_);
        // Another program has cut the file since it was opened.
        if (count == 0)
            throw Failure(FailureNumber::FileCorrupt, u"The file ends too early: " + FromUtf8(path_));
        buffer = buffer.subspan(static_cast<std::size_t>(count));
        offset += static_cast<std::uint64_t>(count);
    }
}

}  // namespace tessarine
