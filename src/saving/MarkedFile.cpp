#include "saving/MarkedFile.h"

#include <algorithm>
#include <array>
#include <span>

#include "files/ReadAt.h"
#include "platform/Crc32.h"

namespace tessarine
{

std::optional<std::vector<std::uint32_t>> ReadBlocks(NativeFile file)
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

}  // namespace tessarine
