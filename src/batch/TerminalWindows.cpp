#include "batch/Terminal.h"

#include <cstdlib>
#include <string_view>

#include <io.h>

#include "platform/WindowsHeaders.h"

namespace tessarine::batch
{

namespace
{

std::string_view Environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

/// The console behind a stream; null when there is none.
HANDLE ConsoleOf(std::FILE* stream)
{
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    DWORD mode = 0;
    return handle != INVALID_HANDLE_VALUE && GetConsoleMode(handle, &mode) ? handle : nullptr;
}

/// Has the console follow the sequences that move the cursor and set colors, as other terminals do. False for one that
/// is too old for that.
bool FollowsSequences(HANDLE console)
{
    constexpr DWORD sequences = 0x0004;  // ENABLE_VIRTUAL_TERMINAL_PROCESSING
    DWORD mode = 0;
    return GetConsoleMode(console, &mode) &&
           ((mode & sequences) != 0 || SetConsoleMode(console, mode | sequences | ENABLE_PROCESSED_OUTPUT));
}

}  // namespace

bool UsesColors(std::FILE* stream)
{
    // Any value of the variable counts, even "0" (no-color.org).
    return CanRewriteLine(stream) && Environment("NO_COLOR").empty();
}

bool CanRewriteLine(std::FILE* stream)
{
    const HANDLE console = ConsoleOf(stream);
    return console != nullptr && Environment("TERM") != "dumb" && FollowsSequences(console);
}

std::size_t TerminalColumns(std::FILE* stream)
{
    const HANDLE console = ConsoleOf(stream);
    CONSOLE_SCREEN_BUFFER_INFO screen{};
    if (console != nullptr && GetConsoleScreenBufferInfo(console, &screen) &&
        screen.srWindow.Right > screen.srWindow.Left)
        return static_cast<std::size_t>(screen.srWindow.Right - screen.srWindow.Left) + 1;
    // A terminal that does not tell its width is taken for one of the classic 80 columns.
    return 80;
}

}  // namespace tessarine::batch
