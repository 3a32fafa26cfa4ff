#include "saving/WriteOver.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

namespace tessarine
{

bool HasRoomFor(NativeFile file, std::uint64_t size)
{
    if (size == 0 || fallocate(file, FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(size)) == 0)
        return true;
    // Nobody can tell then; the write itself will.
    return errno == EOPNOTSUPP || errno == ENOSYS;
}

bool WriteOver(NativeFile file, NativeFile content, std::uint64_t size)
{
    struct stat before = {};
    if (fstat(file, &before) != 0)
        return false;
    std::vector<char> buffer(1 << 16);
    for (std::uint64_t done = 0; done < size;) {
        const std::size_t wanted = std::min<std::uint64_t>(buffer.size(), size - done);
        const ssize_t count = pread(content, buffer.data(), wanted, static_cast<off_t>(done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0) {
            errno = count == 0 ? EIO : errno;  // shorter than what was written to it
            return false;
        }
        for (ssize_t written = 0; written < count;) {
            const ssize_t part = pwrite(file, buffer.data() + written, static_cast<std::size_t>(count - written),
                                        static_cast<off_t>(done) + written);
            if (part < 0 && errno != EINTR)
                return false;
            written += std::max<ssize_t>(part, 0);
        }
        done += static_cast<std::uint64_t>(count);
    }
    if (ftruncate(file, static_cast<off_t>(size)) != 0)
        return false;
    // Writing takes these bits away. Who may not set them has lost nothing but what any other write takes.
    if ((before.st_mode & (S_ISUID | S_ISGID)) != 0)
        fchmod(file, before.st_mode & 07777);
    return fsync(file) == 0;
}

}  // namespace tessarine
