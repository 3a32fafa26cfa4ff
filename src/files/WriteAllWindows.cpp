#include <algorithm>

#include "files/WindowsErrors.h"
#include "files/WriteAll.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

bool WriteAll(NativeFile file, std::string_view bytes)
{
    constexpr std::size_t longest = std::size_t{1} << 30;
    while (!bytes.empty()) {
        DWORD count = 0;
        if (!WriteFile(file, bytes.data(), static_cast<DWORD>(std::min(bytes.size(), longest)), &count, nullptr))
            return LeaveErrorInErrno();
        bytes.remove_prefix(count);
    }
    return true;
}

}  // namespace tessarine
