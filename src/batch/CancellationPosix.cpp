#include "batch/Cancellation.h"

#include <csignal>

#include <unistd.h>

namespace tessarine::batch
{

namespace
{

constexpr int endedBySignal = 130;
// Of a type that a handler of signals may write.
volatile std::sig_atomic_t requested = 0;

extern "C" void OnCancelSignal(int)
{
    if (requested)
        _exit(endedBySignal);  // a handler may not call exit: it would run destructors in the middle of a file
    requested = 1;
}

}  // namespace

void WatchForCancel()
{
    struct sigaction action {
    };
    action.sa_handler = OnCancelSignal;
    action.sa_flags = SA_RESTART;  // reads and writes of the file in progress go on
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

bool IsCancelRequested()
{
    return requested != 0;
}

}  // namespace tessarine::batch
