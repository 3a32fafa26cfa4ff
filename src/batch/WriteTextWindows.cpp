#include "batch/WriteText.h"

#include <algorithm>

#include <io.h>

#include "platform/String.h"
#include "platform/WindowsHeaders.h"

namespace tessarine::batch
{

namespace
{

bool WriteToConsole(HANDLE console, StringView text)
{
    // Older consoles take 64 kB at once.
    constexpr std::size_t longest = 16 * 1024;
    while (!text.empty()) {
        DWORD count = 0;
        const auto length = static_cast<DWORD>(std::min(text.size(), longest));
        if (!WriteConsoleW(console, text.data(), length, &count, nullptr) || count == 0)
            return false;
        text.remove_prefix(count);
    }
    return true;
}

}  // namespace

bool WriteText(std::FILE* stream, std::string_view text)
{
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    DWORD mode = 0;
    if (handle != INVALID_HANDLE_VALUE && GetConsoleMode(handle, &mode))
        return std::fflush(stream) == 0 && WriteToConsole(handle, FromUtf8(text));
    const bool written = std::fwrite(text.data(), 1, text.size(), stream) == text.size();
    const bool flushed = std::fflush(stream) == 0;
    return written && flushed;  // a full disk shows at the flush
}

}  // namespace tessarine::batch
