#include "batch/Terminal.h"

#include <cstdlib>
#include <string_view>

#include <sys/ioctl.h>
#include <unistd.h>

namespace tessarine::batch
{

namespace
{

std::string_view Environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

bool IsTerminal(std::FILE* stream)
{
    return isatty(fileno(stream)) == 1;
}

}  // namespace

bool UsesColors(std::FILE* stream)
{
    // Any value of the variable counts, even "0" (no-color.org).
    return CanRewriteLine(stream) && Environment("NO_COLOR").empty();
}

bool CanRewriteLine(std::FILE* stream)
{
    return IsTerminal(stream) && Environment("TERM") != "dumb";
}

std::size_t TerminalColumns(std::FILE* stream)
{
    winsize size{};
    if (ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        return size.ws_col;
    // A terminal that does not tell its width is taken for one of the classic 80 columns.
    return 80;
}

}  // namespace tessarine::batch
