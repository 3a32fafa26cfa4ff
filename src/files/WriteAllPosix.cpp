#include "files/WriteAll.h"

#include <unistd.h>

#include <cerrno>

namespace tessarine
{

bool WriteAll(NativeFile file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

}  // namespace tessarine
