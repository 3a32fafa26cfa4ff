#include "RenameHook.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

namespace tessarine
{

namespace
{

RenameHook* renameHook = nullptr;

}  // namespace

RenameHook::RenameHook(std::vector<std::function<int()>> steps) : steps_(std::move(steps))
{
    renameHook = this;
}

RenameHook::~RenameHook()
{
    renameHook = nullptr;
}

/// The error that the rename fails with; 0 when it is made.
int ActBeforeRename()
{
    if (renameHook == nullptr || renameHook->next_ == renameHook->steps_.size())
        return 0;
    return renameHook->steps_[renameHook->next_++]();
}

}  // namespace tessarine

/// Takes the place of the C library's own in this program.
extern "C" int renameat2(int oldFolder, const char* oldName, int newFolder, const char* newName,
                         unsigned int flags) noexcept
{
    if (const int error = tessarine::ActBeforeRename(); error != 0) {
        errno = error;
        return -1;
    }
    return static_cast<int>(syscall(SYS_renameat2, oldFolder, oldName, newFolder, newName, flags));
}
