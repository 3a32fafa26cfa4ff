#include "platform/RandomAccessFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>

#include "platform/Failure.h"
#include "platform/FileFailure.h"
#include "platform/FileLock.h"
#include "platform/NativePath.h"

namespace tessarine
{

RandomAccessFile::RandomAccessFile(StringView path) : path_(NativePath(path))
{
    // O_NONBLOCK keeps a named pipe from holding up a run; O_NOATIME is refused for files of other owners.
    constexpr int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK;
    descriptor_ = open(path_.c_str(), flags | O_NOATIME);
    if (descriptor_ < 0 && errno == EPERM)
        descriptor_ = open(path_.c_str(), flags);
    if (descriptor_ < 0)
        throw SystemFileFailure(errno, "open", path_);

    struct stat status = {};
    // The error decides the failure's number: a folder or pipe is "not permitted", a locked file is "in use".
    const char* problem = nullptr;
    int error = 0;
    if (fstat(descriptor_, &status) != 0)
        problem = "read the size of", error = errno;
    else if (!S_ISREG(status.st_mode))
        problem = "read (it is not a file)", error = EACCES;
    identity_ = {status.st_dev, status.st_ino};
    const LockAttempt locks = problem == nullptr ? LookAtLocks(descriptor_, identity_) : LockAttempt::Locked;
    if (locks == LockAttempt::HeldByARun)
        problem = "open (it is in use by another run)", error = ETXTBSY;
    else if (locks == LockAttempt::HeldByAProgram)
        problem = "open (another program has locked it)", error = ETXTBSY;
    if (problem != nullptr) {
        close(descriptor_);
        throw SystemFileFailure(error, problem, path_);
    }
    size_ = static_cast<std::uint64_t>(status.st_size);
}

std::optional<RandomAccessFile::Identity> RandomAccessFile::IdOf(StringView path)
{
    const auto state = FileStateOf(path);
    return state ? std::optional(state->identity) : std::nullopt;
}

RandomAccessFile::~RandomAccessFile()
{
    close(descriptor_);
}

void RandomAccessFile::Read(std::uint64_t offset, std::span<std::byte> buffer) const
{
    while (!buffer.empty()) {
        const ssize_t count = pread(descriptor_, buffer.data(), buffer.size(), static_cast<off_t>(offset));
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
