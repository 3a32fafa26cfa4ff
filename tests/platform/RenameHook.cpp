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

RenameHook::RenameHook(std::function<void()> act, bool isSupported) : act_(std::move(act)), isSupported_(isSupported)
{
    renameHook = this;
}

RenameHook::~RenameHook()
{
    renameHook = nullptr;
}

/// False when the system is to refuse.
bool ActBeforeRename()
{
    if (renameHook == nullptr)
        return true;
    if (const auto act = std::exchange(renameHook->act_, nullptr))
        act();
    return renameHook->isSupported_;
}

}  // namespace tessarine

/// Takes the place of the C library's own in this program.
extern "C" int renameat2(int oldFolder, const char* oldName, int newFolder, const char* newName,
                         unsigned int flags) noexcept
{
    if (!tessarine::ActBeforeRename()) {
        errno = EINVAL;
        return -1;
    }
    return static_cast<int>(syscall(SYS_renameat2, oldFolder, oldName, newFolder, newName, flags));
}
