// Names of files: making, changing and removing them.
#include <fcntl.h>
#include <stdio.h>
#include <sys/types.h>
#include <unistd.h>

#include "shim/Recorder.h"
#include "shim/StandIn.h"

namespace tessarine::torture
{

int Rename(const char* from, const char* to) asm("rename");
int Rename(const char* from, const char* to)
{
    static auto* const real = Real<int(const char*, const char*)>("rename");
    const int result = Pass("rename", {-1, to}, real, from, to);
    if (result == 0)
        record::Renamed(AT_FDCWD, from, AT_FDCWD, to, false);
    return result;
}

int RenameIn(int fromFolder, const char* from, int toFolder, const char* to) asm("renameat");
int RenameIn(int fromFolder, const char* from, int toFolder, const char* to)
{
    static auto* const real = Real<int(int, const char*, int, const char*)>("renameat");
    const int result = Pass("renameat", {toFolder, to}, real, fromFolder, from, toFolder, to);
    if (result == 0)
        record::Renamed(fromFolder, from, toFolder, to, false);
    return result;
}

int RenameBy(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) asm("renameat2");
int RenameBy(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags)
{
    static auto* const real = Real<int(int, const char*, int, const char*, unsigned)>("renameat2");
    const int result = Pass("renameat2", {toFolder, to}, real, fromFolder, from, toFolder, to, flags);
    if (result == 0)
        record::Renamed(fromFolder, from, toFolder, to, (flags & RENAME_EXCHANGE) != 0);
    return result;
}

int Link(const char* from, const char* to) asm("link");
int Link(const char* from, const char* to)
{
    static auto* const real = Real<int(const char*, const char*)>("link");
    const int result = Pass("link", {-1, to}, real, from, to);
    if (result == 0)
        record::Linked(AT_FDCWD, to);
    return result;
}

int LinkIn(int fromFolder, const char* from, int toFolder, const char* to, int flags) asm("linkat");
int LinkIn(int fromFolder, const char* from, int toFolder, const char* to, int flags)
{
    static auto* const real = Real<int(int, const char*, int, const char*, int)>("linkat");
    const int result = Pass("linkat", {toFolder, to}, real, fromFolder, from, toFolder, to, flags);
    if (result == 0)
        record::Linked(toFolder, to);
    return result;
}

int Unlink(const char* path) asm("unlink");
int Unlink(const char* path)
{
    static auto* const real = Real<int(const char*)>("unlink");
    const int result = Pass("unlink", {-1, path}, real, path);
    if (result == 0)
        record::Removed(AT_FDCWD, path);
    return result;
}

int UnlinkIn(int folder, const char* path, int flags) asm("unlinkat");
int UnlinkIn(int folder, const char* path, int flags)
{
    static auto* const real = Real<int(int, const char*, int)>("unlinkat");
    const int result = Pass("unlinkat", {folder, path}, real, folder, path, flags);
    if (result == 0)
        record::Removed(folder, path);
    return result;
}

int Remove(const char* path) asm("remove");
int Remove(const char* path)
{
    static auto* const real = Real<int(const char*)>("remove");
    const int result = Pass("remove", {-1, path}, real, path);
    if (result == 0)
        record::Removed(AT_FDCWD, path);
    return result;
}

int MakeFolder(const char* path, mode_t mode) asm("mkdir");
int MakeFolder(const char* path, mode_t mode)
{
    static auto* const real = Real<int(const char*, mode_t)>("mkdir");
    return Pass("mkdir", {-1, path}, real, path, mode);
}

int MakeFolderIn(int folder, const char* path, mode_t mode) asm("mkdirat");
int MakeFolderIn(int folder, const char* path, mode_t mode)
{
    static auto* const real = Real<int(int, const char*, mode_t)>("mkdirat");
    return Pass("mkdirat", {folder, path}, real, folder, path, mode);
}

}  // namespace tessarine::torture
