#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "platform/Crc32.h"
#include "platform/FileDescriptor.h"
#include "platform/FileFailure.h"
#include "platform/Files.h"
#include "platform/NativePath.h"
#include "platform/ReplacementFile.h"

namespace tessarine
{

void CopyFile(StringView source, StringView target, const CopyComplete& complete)
{
    const std::string sourcePath = NativePath(source);
    const FileDescriptor original(open(sourcePath.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status = {};
    if (!original.IsOpen() || fstat(original.get(), &status) != 0)
        throw ClassicFileFailure(errno, "open", sourcePath);

    // An older target stays until the copy is complete, so that a full disk leaves it as it was.
    ReplacementFile copy(target, ReplacementFile::CopyOf{status.st_mode});
    // Read to the end, not to the size that the file had: it may grow, and some file systems tell no size.
    CopiedContent content;
    std::array<std::byte, 64 * 1024> buffer;
    for (;;) {
        const ssize_t count = read(original.get(), buffer.data(), buffer.size());
        if (count == 0)
            break;
        if (count < 0) {
            if (errno != EINTR)
                throw ClassicFileFailure(errno, "read", sourcePath);
            continue;
        }
        const auto piece = std::span<const std::byte>(buffer).first(static_cast<std::size_t>(count));
        copy.Write(piece);
        content.size += piece.size();
        if (complete)
            content.checksum = Crc32(piece, content.checksum);
    }
    if (complete)
        complete(content);
    copy.Commit();
}

}  // namespace tessarine
