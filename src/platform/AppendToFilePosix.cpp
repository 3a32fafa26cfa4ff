#include "platform/AppendToFile.h"

#include <fcntl.h>

#include <cerrno>

#include "platform/FileDescriptor.h"
#include "platform/FileFailure.h"
#include "platform/NativePath.h"

namespace tessarine
{

void AppendToFile(StringView path, std::string_view bytes)
{
    const std::string nativePath = NativePath(path);
    const FileDescriptor file(open(nativePath.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666));
    if (!file.IsOpen())
        throw ClassicFileFailure(errno, "open", nativePath);
    // One call as a rule, which O_APPEND puts at the end in one piece. Only an interrupted or cut write goes round
    // again.
    while (!bytes.empty()) {
        const ssize_t written = write(file.get(), bytes.data(), bytes.size());
        if (written >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            throw ClassicFileFailure(errno, "write", nativePath);
    }
}

}  // namespace tessarine
