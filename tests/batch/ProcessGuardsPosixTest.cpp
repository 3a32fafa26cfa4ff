#include "batch/ProcessGuards.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include <gtest/gtest.h>

namespace tessarine::batch
{
namespace
{

/// Runs a check in a process of its own, whose standard streams and signals may be spoiled.
template <class Check>
bool HoldsInAChild(Check&& check)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(check() ? 0 : 1);
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(ProcessGuards, KeepTheNumbersOfClosedStreamsFromFiles)
{
    EXPECT_TRUE(HoldsInAChild([] {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            close(stream);

        GuardProcess();

        return open("/dev/null", O_RDWR) > STDERR_FILENO;
    }));
}

TEST(ProcessGuards, LetNobodyTakeAClosedStreamForAWorkingOne)
{
    EXPECT_TRUE(HoldsInAChild([] {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            close(stream);

        GuardProcess();

        char byte = 0;
        return write(STDOUT_FILENO, &byte, 1) < 0 && write(STDERR_FILENO, &byte, 1) < 0 &&
               read(STDIN_FILENO, &byte, 1) < 0;
    }));
}

TEST(ProcessGuards, LeaveOpenStreamsAlone)
{
    EXPECT_TRUE(HoldsInAChild([] {
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0 || dup2(ends[1], STDOUT_FILENO) != STDOUT_FILENO)
            return false;

        GuardProcess();

        char byte = 'x';
        return write(STDOUT_FILENO, &byte, 1) == 1 && read(ends[0], &byte, 1) == 1 && byte == 'x';
    }));
}

TEST(ProcessGuards, MakeAWriteIntoABrokenPipeFail)
{
    EXPECT_TRUE(HoldsInAChild([] {
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0)
            return false;
        close(ends[0]);

        GuardProcess();

        return write(ends[1], "x", 1) < 0 && errno == EPIPE;
    }));
}

}  // namespace
}  // namespace tessarine::batch
