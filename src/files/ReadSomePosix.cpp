#include <unistd.h>

#include <cerrno>

#include "files/ReadAt.h"

namespace tessarine
{

std::optional<std::size_t> ReadSome(NativeFile file, std::uint64_t offset, std::span<std::byte> buffer)
{
    for (;;) {
        const ssize_t count = pread(file, buffer.data(), buffer.size(), static_cast<off_t>(offset));
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno != EINTR)
            return std::nullopt;
    }
}

}  // namespace tessarine
