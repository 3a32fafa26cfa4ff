#include "saving/HalfWrittenFile.h"

#include <algorithm>
#include <array>

#include "platform/Crc32.h"

namespace tessarine
{

namespace
{

using Bytes = std::span<const std::byte>;

bool BeginsWith(Bytes bytes, Bytes beginning)
{
    return bytes.size() >= beginning.size() && std::equal(beginning.begin(), beginning.end(), bytes.begin());
}

/// Whether these bytes may be what a write has left of a block: its old content, up to `oldLength`, with nothing but
/// zeros that made the file longer after it.
bool IsOldBlock(Bytes now, std::size_t oldLength, std::uint32_t oldChecksum)
{
    return now.size() >= oldLength && Crc32(now.first(oldLength)) == oldChecksum &&
           std::all_of(now.begin() + static_cast<std::ptrdiff_t>(oldLength), now.end(),
                       [](std::byte byte) { return byte == std::byte{0}; });
}

/// Whether they may be the block's new content, all of it or the beginning that has reached the file, or its end with
/// the old file's bytes still after it.
bool IsNewBlock(Bytes now, Bytes complete)
{
    return BeginsWith(complete, now) || (!complete.empty() && BeginsWith(now, complete));
}

/// The length of a block of a file of this size.
std::size_t LengthOfBlock(std::uint64_t block, std::uint64_t size)
{
    const std::uint64_t begin = block * WriteEntry::BlockLength;
    return begin >= size ? 0 : static_cast<std::size_t>(std::min<std::uint64_t>(WriteEntry::BlockLength, size - begin));
}

}  // namespace

WriteProgress ProgressOfWrite(const WriteEntry& entry, const BlockReader& file, std::uint64_t fileSize,
                              const BlockReader& copy)
{
    const std::uint64_t oldSize = entry.mark.size;
    const std::uint64_t newSize = entry.copyMark.size;
    bool isOld = fileSize == oldSize;
    bool isNew = fileSize == newSize;
    std::array<std::byte, WriteEntry::BlockLength> now;
    std::array<std::byte, WriteEntry::BlockLength> complete;
    for (std::uint64_t block = 0; block * WriteEntry::BlockLength < fileSize; ++block) {
        const std::uint64_t offset = block * WriteEntry::BlockLength;
        const Bytes nowBytes = std::span(now).first(file(offset, now));
        const Bytes newBytes = std::span(complete).first(copy(offset, complete));
        const bool isOldBlock = IsOldBlock(nowBytes, LengthOfBlock(block, oldSize),
                                           block < entry.oldBlocks.size() ? entry.oldBlocks[block] : Crc32({}));
        if (!isOldBlock && !IsNewBlock(nowBytes, newBytes))
            return WriteProgress::Unrelated;
        isOld = isOld && isOldBlock;
        isNew = isNew && std::equal(nowBytes.begin(), nowBytes.end(), newBytes.begin(), newBytes.end());
    }
    // A file that is shorter than both has lost bytes that neither content explains.
    if (fileSize < std::min(oldSize, newSize))
        return WriteProgress::Unrelated;
    if (isNew)
        return WriteProgress::Done;
    return isOld ? WriteProgress::NotBegun : WriteProgress::HalfDone;
}

}  // namespace tessarine
