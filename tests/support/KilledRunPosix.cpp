#include "support/KilledRun.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

#include "files/Files.h"
#include "saving/RunJournal.h"

namespace tessarine
{

void InKilledProcess(const std::function<void()>& action)
{
    const pid_t child = fork();
    if (child == 0) {
        try {
            action();
        } catch (...) {
        }
        _exit(1);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFSIGNALED(status) || WTERMSIG(status) != SIGKILL)
        throw std::runtime_error("the process was to be killed, and was not");
}

void KillThisProcess()
{
    kill(getpid(), SIGKILL);
    _exit(1);
}

void LeaveWritable(const String& path)
{
    InKilledProcess([&] {
        RunJournal journal;
        journal.Begin(path, GetAttributes(path), {});
        ClearAttributes(path, GetAttributes(path));
        KillThisProcess();
    });
}

std::vector<std::string> TextsOfRecovery()
{
    std::vector<std::string> texts;
    for (const RecoveredFile& file : RecoverFromKilledRuns())
        texts.push_back(ToUtf8(file.text));
    return texts;
}

}  // namespace tessarine
