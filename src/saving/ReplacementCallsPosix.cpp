#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "saving/ReplacementCalls.h"

namespace tessarine
{

namespace
{

constexpr int itself = O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;

}  // namespace

bool MayWrite(const HeldFolder& folder, const NativeString& name)
{
    return faccessat(folder.get(), name.c_str(), W_OK, AT_EACCESS) == 0;
}

bool MayUnprotect(const HeldFolder& folder, const NativeString& name)
{
    struct stat status = {};
    return fstatat(folder.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 && status.st_uid == geteuid();
}

bool MayMakeFiles(const HeldFolder& folder)
{
    return faccessat(folder.get(), ".", W_OK | X_OK, AT_EACCESS) == 0;
}

FileDescriptor OpenForAttributes(const HeldFolder& folder, const NativeString& name)
{
    FileDescriptor file(openat(folder.get(), name.c_str(), O_RDONLY | itself));
    if (!file.IsOpen() && errno == EACCES)
        file = FileDescriptor(openat(folder.get(), name.c_str(), O_PATH | itself));
    return file;
}

FileDescriptor OpenForWriting(const HeldFolder& folder, const NativeString& name)
{
    return FileDescriptor(openat(folder.get(), name.c_str(), O_RDWR | itself));
}

FileDescriptor OpenForDate(const HeldFolder& folder, const NativeString& name)
{
    return FileDescriptor(openat(folder.get(), name.c_str(), O_RDONLY | itself));
}

std::uint64_t CopyRange(NativeFile from, std::uint64_t offset, NativeFile to, std::uint64_t length)
{
    off_t at = static_cast<off_t>(offset);
    std::uint64_t copied = 0;
    while (copied < length) {
        const ssize_t count = copy_file_range(from, &at, to, nullptr, length - copied, 0);
        if (count <= 0)
            break;
        copied += static_cast<std::uint64_t>(count);
    }
    return copied;
}

// Extended attributes are such things here, and KeptAttributes has them.
void CopyStreams(NativeFile, NativeFile) {}

void MakeOwnAlone(NativeFile file)
{
    static_cast<void>(!fchown(file, geteuid(), getegid()));
    fchmod(file, S_IRUSR | S_IWUSR);
}

WriteBarrier WriteBarrier::On(const HeldFolder&, const NativeString&)
{
    return {};
}

// The system gives the file's owner a lease for reading as long as nobody has the file open for writing. Whoever opens
// it so in that moment waits until the lease is given back, which is at once.
bool IsOpenForWriting(const HeldFolder& folder, const NativeString& name)
{
    const FileDescriptor file = OpenForDate(folder, name);
    // The system tells of one who waits by a signal. This one does nothing; the usual one would end the process.
    if (!file.IsOpen() || fcntl(file.get(), F_SETSIG, SIGURG) != 0)
        return false;
    // Other failures are those of file systems without leases, and of files of other users.
    return fcntl(file.get(), F_SETLEASE, F_RDLCK) != 0 && errno == EAGAIN;
}

bool FlushFolder(const HeldFolder& folder)
{
    // Some network file systems can't flush a folder and say that it makes no sense.
    return fsync(folder.get()) == 0 || errno == EINVAL;
}

}  // namespace tessarine
