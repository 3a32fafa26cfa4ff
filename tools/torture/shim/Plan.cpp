#include "shim/Plan.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "shim/Protocol.h"

namespace tessarine::torture
{

namespace
{

std::uint64_t NumberOf(const char* variable)
{
    const char* text = std::getenv(variable);
    return text == nullptr ? 0 : std::strtoull(text, nullptr, 10);
}

/// Everything below calls the system directly, as the C library's functions are the ones that are stood in for.
class Plan
{
public:
    Plan()
        : dieAt_(NumberOf(dieVariable)),
          shortFrom_(NumberOf(shortVariable)),
          isBounded_(std::getenv(fullVariable) != nullptr),
          room_(static_cast<std::int64_t>(NumberOf(fullVariable))),
          door_(std::getenv(doorVariable) == nullptr ? -1 : static_cast<int>(NumberOf(doorVariable)))
    {
        if (const char* fail = std::getenv(failVariable)) {
            char* rest = nullptr;
            failAt_ = std::strtoull(fail, &rest, 10);
            failError_ = static_cast<int>(std::strtol(rest + 1, &rest, 10));
            failsForGood_ = *rest == ':';
        }
        if (const char* ask = std::getenv(askVariable))
            asked_ = std::string(",") + ask + ",";
        if (const char* path = std::getenv(counterVariable))
            ShareCounter(path);
    }

    int Meet(const char* call, const Subject& subject)
    {
        const std::uint64_t number = counter_->fetch_add(1) + 1;
        if (number == dieAt_)
            syscall(SYS_kill, getpid(), SIGKILL);
        if (number == failAt_ || (failsForGood_ && number > failAt_))
            return failError_;
        return IsAsked(number) ? Ask(number, call, subject) : 0;
    }

    std::size_t Room(int descriptor, std::size_t wanted)
    {
        if (shortFrom_ != 0 && counter_->load() >= shortFrom_)
            wanted = std::max<std::size_t>(1, wanted / 2);
        struct stat status = {};
        if (!isBounded_ || syscall(SYS_fstat, descriptor, &status) != 0 || !S_ISREG(status.st_mode))
            return wanted;
        const std::int64_t before = room_.fetch_sub(static_cast<std::int64_t>(wanted));
        return before <= 0 ? 0 : std::min(wanted, static_cast<std::size_t>(before));
    }

private:
    void ShareCounter(const char* path)
    {
        const auto file = static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, O_RDWR | O_CLOEXEC));
        void* shared = mmap(nullptr, sizeof *counter_, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (shared != MAP_FAILED)
            counter_ = static_cast<std::atomic<std::uint64_t>*>(shared);
        syscall(SYS_close, file);
    }

    bool IsAsked(std::uint64_t number) const
    {
        if (door_ < 0 || asked_.empty())
            return false;
        return asked_ == ",all," || asked_.find("," + std::to_string(number) + ",") != std::string::npos;
    }

    int Ask(std::uint64_t number, const char* call, const Subject& subject) const
    {
        Question question;
        question.number = number;
        question.descriptor = subject.descriptor;
        std::strncpy(question.call, call, sizeof question.call - 1);
        if (subject.path != nullptr)
            std::strncpy(question.path, subject.path, sizeof question.path - 1);
        Answer answer;
        // An attacker that is gone has no wishes.
        if (send(door_, &question, sizeof question, MSG_NOSIGNAL) != sizeof question)
            return 0;
        ssize_t count = 0;
        while ((count = recv(door_, &answer, sizeof answer, 0)) < 0 && errno == EINTR) {
        }
        return count == sizeof answer && answer.verdict == Verdict::Fail ? answer.error : 0;
    }

    std::uint64_t dieAt_;
    std::uint64_t failAt_ = 0;
    int failError_ = 0;
    bool failsForGood_ = false;
    std::uint64_t shortFrom_;
    bool isBounded_;
    std::atomic<std::int64_t> room_;
    int door_;
    std::string asked_;
    std::atomic<std::uint64_t> own_ = 0;
    std::atomic<std::uint64_t>* counter_ = &own_;
};

/// Made when the first call is met, which may be before the program's own statics are. Never destroyed, as calls are
/// met until the end.
Plan& ThePlan()
{
    static Plan* const plan = new Plan;
    return *plan;
}

}  // namespace

int Meet(const char* call, Subject subject)
{
    const int before = errno;
    const int error = ThePlan().Meet(call, subject);
    errno = before;
    return error;
}

std::size_t Room(int descriptor, std::size_t wanted)
{
    return ThePlan().Room(descriptor, wanted);
}

}  // namespace tessarine::torture
