#include "batch/Cancellation.h"

#include <array>
#include <atomic>
#include <csignal>
#include <string>

#include <unistd.h>

#include "batch/LineAtTheEnd.h"
#include "saving/Leftovers.h"

namespace tessarine::batch
{

namespace
{

constexpr int endedBySignal = 130;
// Of a type that a handler of signals may write, and that any thread may read.
std::atomic<int> requested = 0;
static_assert(std::atomic<int>::is_always_lock_free);

// The line about the files in work, made beforehand because a handler may not put texts together. Two, so that one is
// whole while the other is written.
std::array<std::string, 2> linesAtTheEnd{LineAtTheEnd({}), {}};
volatile std::sig_atomic_t lineInUse = 0;

extern "C" void OnCancelSignal(int)
{
    if (!requested) {
        requested = 1;
        return;
    }
    RemoveNewFilesNow();
    const std::string& text = linesAtTheEnd[static_cast<std::size_t>(lineInUse)];
    // The compiler warns of an unused result in spite of a cast; nothing can be done about a failure here.
    if (write(STDERR_FILENO, text.data(), text.size()) < 0)
        _exit(endedBySignal);
    _exit(endedBySignal);  // a handler may not call exit: it would run destructors in the middle of a file
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

void SetFilesInWork(const std::vector<String>& paths)
{
    const std::size_t other = lineInUse == 0 ? 1 : 0;
    linesAtTheEnd[other] = LineAtTheEnd(paths);
    // The signal may come between any two instructions, which the compiler is free to put in another order.
    std::atomic_signal_fence(std::memory_order_release);
    lineInUse = static_cast<std::sig_atomic_t>(other);
}

bool IsCancelRequested()
{
    return requested != 0;
}

}  // namespace tessarine::batch
