#include "saving/MarkedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "files/FileDescriptor.h"
#include "platform/Crc32.h"
#include "platform/FolderOf.h"

namespace tessarine
{

std::optional<FileMark> MarkOf(int file)
{
    struct stat status = {};
    if (fstat(file, &status) != 0)
        return std::nullopt;
    return FileMark{status.st_ino, static_cast<std::uint64_t>(status.st_size), status.st_mtim};
}

bool IsOwnFile(int file)
{
    struct stat status = {};
    return fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid();
}

std::optional<std::size_t> ReadAt(int file, std::uint64_t offset, std::span<std::byte> buffer)
{
    std::size_t length = 0;
    while (length < buffer.size()) {
        const ssize_t count =
            pread(file, buffer.data() + length, buffer.size() - length, static_cast<off_t>(offset + length));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        length += static_cast<std::size_t>(count);
    }
    return length;
}

std::optional<std::vector<std::uint32_t>> ReadBlocks(int file)
{
    std::vector<std::uint32_t> blocks;
    std::array<std::byte, 16 * WriteEntry::BlockLength> buffer;
    std::uint64_t offset = 0;
    for (;;) {
        const auto length = ReadAt(file, offset, buffer);
        if (!length)
            return std::nullopt;
        if (*length == 0)
            return blocks;
        for (std::size_t begin = 0; begin < *length; begin += WriteEntry::BlockLength)
            blocks.push_back(
                Crc32(std::span(buffer).subspan(begin, std::min(WriteEntry::BlockLength, *length - begin))));
        offset += *length;
    }
}

void FlushFolderOf(const std::string& path)
{
    const std::string folder(FolderOf(std::string_view(path)));
    const FileDescriptor opened(open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.IsOpen())
        fsync(opened.get());
}

}  // namespace tessarine
