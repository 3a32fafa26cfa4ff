#include <algorithm>

#include "files/ReadAt.h"
#include "files/WindowsErrors.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

std::optional<std::size_t> ReadSome(NativeFile file, std::uint64_t offset, std::span<std::byte> buffer)
{
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    constexpr std::size_t longest = std::size_t{1} << 30;
    DWORD count = 0;
    if (ReadFile(file, buffer.data(), static_cast<DWORD>(std::min(buffer.size(), longest)), &count, &place))
        return count;
    if (GetLastError() == ERROR_HANDLE_EOF)
        return 0;
    LeaveErrorInErrno();
    return std::nullopt;
}

}  // namespace tessarine
