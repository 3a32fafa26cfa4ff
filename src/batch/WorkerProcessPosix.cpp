#include "batch/WorkerProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include <fmt/format.h>

#include "files/FileDescriptor.h"
#include "platform/Failure.h"
#include "saving/Leftovers.h"

namespace tessarine::batch
{

namespace
{

/// Of the process that ends with its starter; no other use of it is made.
constexpr int starterEnded = SIGUSR1;

[[noreturn]] void RaiseNotStarted(int error)
{
    throw Failure(FailureNumber::DeviceIO, u"A worker could not be started: " + FromUtf8(std::strerror(error)) + u".");
}

struct Pipe {
    FileDescriptor reading;
    FileDescriptor writing;
};

/// Both ends close at a start of another program: a worker that held an end of another one's pipe would keep that one
/// waiting.
Pipe NewPipe()
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        RaiseNotStarted(errno);
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

/// What a start of a program needs, as long as it lives.
class SpawnTerms
{
public:
    SpawnTerms(int input, int output)
    {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_adddup2(&actions_, input, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
        posix_spawnattr_init(&attributes_);
        // Held back for good: a terminal and a scheduler send them to all processes of a run.
        sigset_t kept;
        sigemptyset(&kept);
        sigaddset(&kept, SIGINT);
        sigaddset(&kept, SIGTERM);
        posix_spawnattr_setsigmask(&attributes_, &kept);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK);
    }
    ~SpawnTerms()
    {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnTerms(const SpawnTerms&) = delete;
    SpawnTerms& operator=(const SpawnTerms&) = delete;

    const posix_spawn_file_actions_t* Actions() const { return &actions_; }
    const posix_spawnattr_t* Attributes() const { return &attributes_; }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

pid_t Spawn(const std::vector<std::string>& arguments, int input, int output)
{
    std::string name = "tessarine-batch";
    std::vector<std::string> texts = arguments;
    std::vector<char*> pointers{name.data()};
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);

    const SpawnTerms terms(input, output);
    pid_t process = 0;
    // This very program, also when a newer one has been installed over it meanwhile.
    const int error =
        posix_spawn(&process, "/proc/self/exe", terms.Actions(), terms.Attributes(), pointers.data(), environ);
    if (error != 0)
        RaiseNotStarted(error);
    return process;
}

std::string EndText(int status)
{
    if (WIFSIGNALED(status))
        return fmt::format("signal {}, {}", WTERMSIG(status), strsignal(WTERMSIG(status)));
    return fmt::format("exit status {}", WEXITSTATUS(status));
}

extern "C" void OnStarterEnded(int)
{
    RemoveNewFilesNow();
    _exit(1);
}

}  // namespace

class WorkerProcess::System
{
public:
    explicit System(const std::vector<std::string>& arguments)
    {
        Pipe input = NewPipe();
        Pipe output = NewPipe();
        process_ = Spawn(arguments, input.reading.get(), output.writing.get());
        input_ = std::move(input.writing);
        output_ = std::move(output.reading);
    }
    ~System()
    {
        if (process_ == 0)
            return;
        kill(process_, SIGKILL);
        Wait();
    }
    System(const System&) = delete;
    System& operator=(const System&) = delete;

    bool Write(std::string_view bytes)
    {
        while (!bytes.empty()) {
            const ssize_t written = write(input_.get(), bytes.data(), bytes.size());
            if (written >= 0)
                bytes.remove_prefix(static_cast<std::size_t>(written));
            else if (errno != EINTR)
                return false;
        }
        return true;
    }

    bool Read(std::span<char> bytes)
    {
        while (!bytes.empty()) {
            const ssize_t count = read(output_.get(), bytes.data(), bytes.size());
            if (count > 0)
                bytes = bytes.subspan(static_cast<std::size_t>(count));
            else if (count == 0 || errno != EINTR)
                return false;
        }
        return true;
    }

    void CloseInput() { input_ = {}; }

    std::string End()
    {
        CloseInput();
        return EndText(Wait());
    }

private:
    int Wait()
    {
        int status = 0;
        while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
        }
        process_ = 0;
        return status;
    }

    pid_t process_ = 0;  // 0 once it has ended
    FileDescriptor input_;
    FileDescriptor output_;
};

WorkerProcess::WorkerProcess(const std::vector<std::string>& arguments) : system_(std::make_unique<System>(arguments))
{
}

WorkerProcess::~WorkerProcess() = default;

bool WorkerProcess::Write(std::string_view bytes)
{
    return system_->Write(bytes);
}

bool WorkerProcess::Read(std::span<char> bytes)
{
    return system_->Read(bytes);
}

void WorkerProcess::CloseInput()
{
    system_->CloseInput();
}

std::string WorkerProcess::End()
{
    return system_->End();
}

void EndWithStarter()
{
    struct sigaction action {
    };
    action.sa_handler = OnStarterEnded;
    sigemptyset(&action.sa_mask);
    sigaction(starterEnded, &action, nullptr);
    // A starter that has ended by now has closed the worker's input, which ends it as well.
    prctl(PR_SET_PDEATHSIG, starterEnded);
}

}  // namespace tessarine::batch
