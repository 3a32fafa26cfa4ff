#include "files/Files.h"

#include <array>
#include <cerrno>
#include <span>

#include "files/FileFailure.h"
#include "files/OpenForReading.h"
#include "files/ReadAt.h"

namespace tessarine
{

std::vector<String> FilesOfFolder(StringView folder)
{
    return ContentOfFolder(folder).files;
}

std::string ReadWholeFile(StringView path)
{
    const NativeString native = NativePath(path);
    const FileDescriptor file = OpenForReading(native);
    const auto status = file.IsOpen() ? StatusOf(file.get()) : std::nullopt;
    if (!status)
        throw ClassicFileFailure(errno, "open", native);
    // Of a pipe or a device nobody knows when it ends.
    if (status->kind != FileKind::File)
        throw ClassicFileFailure(EACCES, "read (it is not a file)", native);

    std::string content;
    std::array<char, 64 * 1024> buffer;
    for (;;) {
        const auto count = ReadSome(file.get(), content.size(), std::as_writable_bytes(std::span(buffer)));
        if (!count)
            throw ClassicFileFailure(errno, "read", native);
        if (*count == 0)
            return content;
        content.append(buffer.data(), *count);
    }
}

}  // namespace tessarine
