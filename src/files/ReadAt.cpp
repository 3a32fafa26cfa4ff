#include "files/ReadAt.h"

namespace tessarine
{

std::optional<std::size_t> ReadAt(NativeFile file, std::uint64_t offset, std::span<std::byte> buffer)
{
    std::size_t length = 0;
    while (length < buffer.size()) {
        const auto count = ReadSome(file, offset + length, buffer.subspan(length));
        if (!count)
            return std::nullopt;
        if (*count == 0)
            break;
        length += *count;
    }
    return length;
}

}  // namespace tessarine
