#include "Usage.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace tessarine::bench
{

namespace
{

double Seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

rusage UsageOf(int who)
{
    rusage usage{};
    getrusage(who, &usage);
    return usage;
}

}  // namespace

double ProcessorSeconds()
{
    timespec own{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
    const rusage children = UsageOf(RUSAGE_CHILDREN);
    return static_cast<double>(own.tv_sec) + static_cast<double>(own.tv_nsec) / 1e9 + Seconds(children.ru_utime) +
           Seconds(children.ru_stime);
}

std::int64_t PeakKibibytes()
{
    // Not ru_maxrss for this process: that one inherits the peak of the program that was replaced by exec.
    std::ifstream status("/proc/self/status");
    std::int64_t own = 0;
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:"))
            own = std::atoll(line.c_str() + 6);
    }
    return std::max<std::int64_t>(own, UsageOf(RUSAGE_CHILDREN).ru_maxrss);
}

std::int64_t PeakKibibytesOfChild(const std::string& name)
{
    std::array<int, 2> channel{};
    if (pipe2(channel.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, channel[1], STDOUT_FILENO);

    std::string program = "/proc/self/exe";
    std::string argument = "--peak=" + name;
    const std::array<char*, 3> arguments{program.data(), argument.data(), nullptr};
    pid_t child = 0;
    const int error = posix_spawn(&child, program.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(channel[1]);
    if (error != 0)
        throw std::runtime_error("can't start a child");

    std::array<char, 32> text{};
    const ssize_t size = read(channel[0], text.data(), text.size() - 1);
    close(channel[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return size > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0 ? std::atoll(text.data()) : 0;
}

}  // namespace tessarine::bench
