#include <sys/stat.h>

#include <stdexcept>

#include "support/TemporaryFolder.h"

namespace tessarine
{

mode_t ModeOf(StringView path)
{
    struct stat status = {};
    if (stat(ToUtf8(path).c_str(), &status) != 0)
        throw std::runtime_error("missing: " + ToUtf8(path));
    return status.st_mode & 07777;
}

void SetMode(StringView path, mode_t mode)
{
    if (chmod(ToUtf8(path).c_str(), mode) != 0)
        throw std::runtime_error("could not set the mode of " + ToUtf8(path));
}

}  // namespace tessarine
