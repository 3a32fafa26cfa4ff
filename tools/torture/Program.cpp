#include "Program.h"

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace tessarine::torture
{

namespace
{

/// Ample for a loaded machine; a run takes some milliseconds.
constexpr int patienceMilliseconds = 30'000;

std::vector<char*> Pointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

int OpenForOutput(const Path& path)
{
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0)
        throw std::runtime_error("can't write " + path.string());
    return file;
}

/// A name for the files of a run that is not taken in the folder.
std::string FreeName(const Path& folder)
{
    for (int number = 1;; ++number) {
        const std::string name = "run-" + std::to_string(number);
        if (!std::filesystem::exists(folder / (name + ".error")))
            return name;
    }
}

/// Calls on an open file tell its number alone.
void AddPath(Question& question, pid_t process)
{
    if (question.path[0] != '\0' || question.descriptor < 0)
        return;
    const Path link = "/proc/" + std::to_string(process) + "/fd/" + std::to_string(question.descriptor);
    std::error_code error;
    const std::string path = std::filesystem::read_symlink(link, error).string();
    path.copy(question.path, sizeof question.path - 1);
}

}  // namespace

Call& Call::Counted()
{
    attack[counterVariable] = "";  // the run puts a path in
    return *this;
}

Call& Call::DiesAt(std::uint64_t number)
{
    attack[dieVariable] = std::to_string(number);
    return Counted();
}

Call& Call::FailsAt(std::uint64_t number, int error, bool andAllAfterIt)
{
    attack[failVariable] = std::to_string(number) + ":" + std::to_string(error) + (andAllAfterIt ? ":+" : "");
    return Counted();
}

Call& Call::WritesShortFrom(std::uint64_t number)
{
    attack[shortVariable] = std::to_string(number);
    return Counted();
}

Call& Call::DiskIsFullAfter(std::uint64_t bytes)
{
    attack[fullVariable] = std::to_string(bytes);
    return *this;
}

Call& Call::RecordedIn(const Path& record)
{
    attack[recordVariable] = record.string();
    return *this;
}

Call& Call::AsksAt(const std::vector<std::uint64_t>& numbers)
{
    std::string list;
    for (const std::uint64_t number : numbers)
        list += (list.empty() ? "" : ",") + std::to_string(number);
    attack[askVariable] = list;
    return Counted();
}

Call& Call::AsksAtAll()
{
    attack[askVariable] = "all";
    return Counted();
}

std::string Outcome::Text() const
{
    std::string text = hung          ? std::string("hung")
                       : signal != 0 ? "ended by signal " + std::to_string(signal)
                                     : "exit status " + std::to_string(status);
    return text + "\n" + output + error;
}

Running::Running(Round& round, const Call& call) : round_(round)
{
    const std::string name = FreeName(round.Folder());
    outputPath_ = round.Folder() / (name + ".output");
    errorPath_ = round.Folder() / (name + ".error");
    counterPath_ = round.Folder() / (name + ".counter");
    Start(call, name);
}

void Running::Start(const Call& call, const std::string& name)
{
    std::filesystem::create_directories(call.dataFolder);
    std::vector<std::string> arguments{TESSARINE_BATCH};
    arguments.insert(arguments.end(), call.arguments.begin(), call.arguments.end());
    std::vector<std::string> environment{"LC_ALL=C.UTF-8", "TZ=UTC", "HOME=" + call.dataFolder.string(),
                                         "XDG_DATA_HOME=" + call.dataFolder.string()};
    std::string note = name + ":";
    int farEnd = -1;
    if (!call.attack.empty()) {
        environment.push_back(std::string("LD_PRELOAD=") + TESSARINE_TORTURE_SHIM);
        for (auto [variable, value] : call.attack) {
            if (variable == counterVariable) {
                Write(counterPath_, std::string(8, '\0'));
                std::filesystem::permissions(counterPath_, std::filesystem::perms(0666));
                value = counterPath_.string();
            }
            environment.push_back(variable + "=" + value);
            note += " " + environment.back();
        }
        if (call.attack.contains(askVariable)) {
            int ends[2];
            if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
                throw std::runtime_error("no socket pair");
            door_ = ends[0];
            farEnd = ends[1];
        }
    }
    for (const std::string& argument : call.arguments)
        note += " '" + argument + "'";
    round_.Note(note);

    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    const int output = call.output >= 0 ? fcntl(call.output, F_DUPFD_CLOEXEC, 3) : OpenForOutput(outputPath_);
    const int error = OpenForOutput(errorPath_);
    // A number that stays the same in the child, above those that dup2 sets.
    const int door = farEnd < 0 ? -1 : fcntl(farEnd, F_DUPFD_CLOEXEC, 100);
    if (door >= 0)
        environment.push_back(std::string(doorVariable) + "=" + std::to_string(door));
    const auto argumentPointers = Pointers(arguments);
    const auto environmentPointers = Pointers(environment);

    process_ = fork();
    if (process_ < 0)
        throw std::runtime_error("can't start a process");
    if (process_ == 0) {
        // Only calls that are safe between fork and exec: other threads may be attacking.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        bool ready = dup2(nothing, 0) == 0 && dup2(output, 1) == 1 && dup2(error, 2) == 2;
        if (door >= 0)
            ready = ready && fcntl(door, F_SETFD, 0) == 0;
        if (call.longestFile) {
            const rlimit limit{*call.longestFile, *call.longestFile};
            ready = ready && setrlimit(RLIMIT_FSIZE, &limit) == 0;
        }
        if (call.user)
            ready = ready && setgroups(0, nullptr) == 0 && setgid(*call.user) == 0 && setuid(*call.user) == 0;
        signal(SIGPIPE, SIG_DFL);
        if (ready)
            execve(argumentPointers[0], argumentPointers.data(), environmentPointers.data());
        _exit(127);
    }
    for (const int descriptor : {nothing, output, error, farEnd, door})
        if (descriptor >= 0)
            close(descriptor);
    pidDescriptor_ = static_cast<int>(syscall(SYS_pidfd_open, process_, 0));
}

Running::~Running()
{
    if (process_ > 0) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    for (const int descriptor : {pidDescriptor_, door_})
        if (descriptor >= 0)
            close(descriptor);
}

void Running::Signal(int signal) const
{
    // Not reaped yet, so the number can't be anybody else's.
    kill(process_, signal);
}

std::optional<Question> Running::NextQuestion()
{
    pollfd waits[2] = {{door_, POLLIN, 0}, {pidDescriptor_, POLLIN, 0}};
    int ready = 0;
    while ((ready = poll(waits, 2, patienceMilliseconds)) < 0 && errno == EINTR) {
    }
    if (ready == 0) {
        hung_ = true;
        Signal(SIGKILL);
        return std::nullopt;
    }
    Question question;
    if ((waits[0].revents & POLLIN) != 0 && recv(door_, &question, sizeof question, 0) == sizeof question) {
        AddPath(question, process_);
        return question;
    }
    return std::nullopt;
}

void Running::LetGo()
{
    const Answer answer{};
    send(door_, &answer, sizeof answer, MSG_NOSIGNAL);
}

void Running::LetFail(int error)
{
    const Answer answer{Verdict::Fail, error};
    send(door_, &answer, sizeof answer, MSG_NOSIGNAL);
}

Outcome Running::End()
{
    while (door_ >= 0 && NextQuestion())
        LetGo();
    pollfd wait{pidDescriptor_, POLLIN, 0};
    int ready = 0;
    while ((ready = poll(&wait, 1, patienceMilliseconds)) < 0 && errno == EINTR) {
    }
    if (ready == 0) {
        hung_ = true;
        Signal(SIGKILL);
    }
    int status = 0;
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    Outcome outcome;
    outcome.hung = hung_;
    if (WIFSIGNALED(status))
        outcome.signal = WTERMSIG(status);
    else
        outcome.status = WEXITSTATUS(status);
    outcome.output = ContentIfThere(outputPath_).value_or("");
    outcome.error = ContentIfThere(errorPath_).value_or("");
    if (const auto counter = ContentIfThere(counterPath_); counter && counter->size() == sizeof outcome.callsMet)
        std::memcpy(&outcome.callsMet, counter->data(), sizeof outcome.callsMet);
    round_.Note(outcome.Text());
    if (outcome.status == 127)
        throw std::runtime_error("the program can't be started");
    return outcome;
}

Outcome Run(Round& round, const Call& call)
{
    return Running(round, call).End();
}

}  // namespace tessarine::torture
