#include "KilledProcess.h"

#include <signal.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessarine::test
{

Outcome KillSaveAt(std::size_t stop, const std::function<void()>& prepare, const std::function<void()>& save)
{
    const pid_t child = fork();
    if (child == 0) {
        prepare();
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            _exit(1);
        raise(SIGSTOP);
        save();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFSTOPPED(status))
        return Outcome::NotTraceable;
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_EXITKILL | PTRACE_O_TRACESYSGOOD);
    for (std::size_t met = 0; met < stop; ++met) {
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        waitpid(child, &status, 0);
        if (WIFEXITED(status))
            return Outcome::Finished;
    }
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return Outcome::Killed;
}

}  // namespace tessarine::test
