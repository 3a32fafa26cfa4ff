#include <algorithm>
#include <cerrno>
#include <span>
#include <vector>

#include "files/FileState.h"
#include "files/ReadAt.h"
#include "files/WindowsErrors.h"
#include "platform/WindowsHeaders.h"
#include "saving/WriteOver.h"

namespace tessarine
{

namespace
{

bool WriteAt(NativeFile file, std::uint64_t offset, std::span<const std::byte> bytes)
{
    while (!bytes.empty()) {
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(offset);
        place.OffsetHigh = static_cast<DWORD>(offset >> 32);
        DWORD count = 0;
        if (!WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &count, &place))
            return LeaveErrorInErrno();
        bytes = bytes.subspan(count);
        offset += count;
    }
    return true;
}

}  // namespace

bool HasRoomFor(NativeFile file, std::uint64_t size)
{
    const auto state = FileStateOf(file);
    // Less than it has would cut it.
    if (!state || size <= state->size)
        return true;
    FILE_ALLOCATION_INFO room{};
    room.AllocationSize.QuadPart = static_cast<LONGLONG>(size);
    if (SetFileInformationByHandle(file, FileAllocationInfo, &room, sizeof room))
        return true;
    LeaveErrorInErrno();
    // For any other reason nobody can tell; the write itself will.
    return errno != ENOSPC;
}

bool WriteOver(NativeFile file, NativeFile content, std::uint64_t size)
{
    std::vector<std::byte> buffer(1 << 16);
    for (std::uint64_t done = 0; done < size;) {
        const std::size_t wanted = std::min<std::uint64_t>(buffer.size(), size - done);
        const auto count = ReadSome(content, done, std::span(buffer).first(wanted));
        if (!count)
            return false;
        if (*count == 0) {
            errno = EIO;  // shorter than what was written to it
            return false;
        }
        if (!WriteAt(file, done, std::span<const std::byte>(buffer).first(*count)))
            return false;
        done += *count;
    }
    FILE_END_OF_FILE_INFO end{};
    end.EndOfFile.QuadPart = static_cast<LONGLONG>(size);
    return (SetFileInformationByHandle(file, FileEndOfFileInfo, &end, sizeof end) && FlushFileBuffers(file)) ||
           LeaveErrorInErrno();
}

}  // namespace tessarine
