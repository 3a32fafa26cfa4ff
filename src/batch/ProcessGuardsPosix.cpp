#include "batch/ProcessGuards.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace tessarine::batch
{

void GuardProcess()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    // Each opened for what it is not used for. A file that is opened gets the lowest free number.
    constexpr std::array<int, 3> modes{O_WRONLY, O_RDONLY, O_RDONLY};
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) < 0 && errno == EBADF)
            static_cast<void>(!open("/dev/null", modes[static_cast<std::size_t>(descriptor)]));
    }
}

}  // namespace tessarine::batch
