#include "OtherProcess.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <optional>
#include <stdexcept>

#include "files/FileLock.h"

namespace tessarine
{

namespace
{

bool Lock(const String& path, LockedByAnother::Kind kind)
{
    if (kind == LockedByAnother::Kind::Run) {
        static std::optional<FileLock> lock;  // until the process ends
        return lock.emplace(path).IsHeld();
    }
    const int file = open(ToUtf8(path).c_str(), O_RDWR);
    if (kind != LockedByAnother::Kind::Record)
        return flock(file, kind == LockedByAnother::Kind::WholeFile ? LOCK_EX : LOCK_SH) == 0;
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    return fcntl(file, F_SETLK, &lock) == 0;
}

}  // namespace

OtherProcess::OtherProcess(const std::function<bool()>& act)
{
    int ready[2];
    int done[2];
    if (pipe2(ready, O_CLOEXEC) != 0 || pipe2(done, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    child_ = fork();
    if (child_ == 0) {
        close(done[1]);
        char answer = 'n';
        try {
            answer = act() ? 'y' : 'n';
        } catch (...) {
            answer = 'n';  // the parent raises
        }
        if (write(ready[1], &answer, 1) == 1)
            static_cast<void>(!read(done[0], &answer, 1));
        _exit(0);
    }
    close(ready[1]);
    close(done[0]);
    done_ = done[1];
    char answer = 'n';
    const bool hasAnswered = read(ready[0], &answer, 1) == 1;
    close(ready[0]);
    if (!hasAnswered || answer != 'y') {
        close(done_);
        waitpid(child_, nullptr, 0);
        throw std::runtime_error("the other process could not do its part");
    }
}

OtherProcess::~OtherProcess()
{
    close(done_);
    waitpid(child_, nullptr, 0);
}

LockedByAnother::LockedByAnother(const String& path, Kind kind) : OtherProcess([&] { return Lock(path, kind); }) {}

}  // namespace tessarine
