// Modes, owners, times, extended attributes, locks, and asking about files.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdarg>

#include "shim/Recorder.h"
#include "shim/StandIn.h"

namespace tessarine::torture
{

int SetModeOf(int file, mode_t mode) asm("fchmod");
int SetModeOf(int file, mode_t mode)
{
    static auto* const real = Real<int(int, mode_t)>("fchmod");
    const int result = Pass("fchmod", {file}, real, file, mode);
    if (result == 0)
        record::ModeSet(file, mode);
    return result;
}

int SetMode(const char* path, mode_t mode) asm("chmod");
int SetMode(const char* path, mode_t mode)
{
    static auto* const real = Real<int(const char*, mode_t)>("chmod");
    return Pass("chmod", {-1, path}, real, path, mode);
}

int SetModeIn(int folder, const char* path, mode_t mode, int flags) asm("fchmodat");
int SetModeIn(int folder, const char* path, mode_t mode, int flags)
{
    static auto* const real = Real<int(int, const char*, mode_t, int)>("fchmodat");
    return Pass("fchmodat", {folder, path}, real, folder, path, mode, flags);
}

int SetOwnerOf(int file, uid_t user, gid_t group) asm("fchown");
int SetOwnerOf(int file, uid_t user, gid_t group)
{
    static auto* const real = Real<int(int, uid_t, gid_t)>("fchown");
    return Pass("fchown", {file}, real, file, user, group);
}

int SetOwnerIn(int folder, const char* path, uid_t user, gid_t group, int flags) asm("fchownat");
int SetOwnerIn(int folder, const char* path, uid_t user, gid_t group, int flags)
{
    static auto* const real = Real<int(int, const char*, uid_t, gid_t, int)>("fchownat");
    return Pass("fchownat", {folder, path}, real, folder, path, user, group, flags);
}

int SetTimesOf(int file, const timespec* times) asm("futimens");
int SetTimesOf(int file, const timespec* times)
{
    static auto* const real = Real<int(int, const timespec*)>("futimens");
    return Pass("futimens", {file}, real, file, times);
}

int SetTimesIn(int folder, const char* path, const timespec* times, int flags) asm("utimensat");
int SetTimesIn(int folder, const char* path, const timespec* times, int flags)
{
    static auto* const real = Real<int(int, const char*, const timespec*, int)>("utimensat");
    return Pass("utimensat", {folder, path}, real, folder, path, times, flags);
}

int SetAttributeOf(int file, const char* name, const void* value, std::size_t size, int flags) asm("fsetxattr");
int SetAttributeOf(int file, const char* name, const void* value, std::size_t size, int flags)
{
    static auto* const real = Real<int(int, const char*, const void*, std::size_t, int)>("fsetxattr");
    return Pass("fsetxattr", {file}, real, file, name, value, size, flags);
}

int RemoveAttributeOf(int file, const char* name) asm("fremovexattr");
int RemoveAttributeOf(int file, const char* name)
{
    static auto* const real = Real<int(int, const char*)>("fremovexattr");
    return Pass("fremovexattr", {file}, real, file, name);
}

ssize_t AttributeOf(int file, const char* name, void* value, std::size_t size) asm("fgetxattr");
ssize_t AttributeOf(int file, const char* name, void* value, std::size_t size)
{
    static auto* const real = Real<ssize_t(int, const char*, void*, std::size_t)>("fgetxattr");
    return Pass("fgetxattr", {file}, real, file, name, value, size);
}

ssize_t AttributesOf(int file, char* names, std::size_t size) asm("flistxattr");
ssize_t AttributesOf(int file, char* names, std::size_t size)
{
    static auto* const real = Real<ssize_t(int, char*, std::size_t)>("flistxattr");
    return Pass("flistxattr", {file}, real, file, names, size);
}

int Lock(int file, int operation) asm("flock");
int Lock(int file, int operation)
{
    static auto* const real = Real<int(int, int)>("flock");
    return Pass("flock", {file}, real, file, operation);
}

namespace
{

int Control(int file, int command, void* argument)
{
    static auto* const real = Real<int(int, int, ...)>("fcntl");
    if (const int error = Meet("fcntl", {file})) {
        errno = error;
        return -1;
    }
    return real(file, command, argument);
}

}  // namespace

int ControlFile(int file, int command, ...) asm("fcntl");
int ControlFile(int file, int command, ...)
{
    va_list arguments;
    va_start(arguments, command);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    return Control(file, command, argument);
}

int ControlFile64(int file, int command, ...) asm("fcntl64");
int ControlFile64(int file, int command, ...)
{
    va_list arguments;
    va_start(arguments, command);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    return Control(file, command, argument);
}

using Status = struct stat;

int StatusOf(int file, Status* status) asm("fstat");
int StatusOf(int file, Status* status)
{
    static auto* const real = Real<int(int, Status*)>("fstat");
    return Pass("fstat", {file}, real, file, status);
}

int StatusOf64(int file, Status* status) asm("fstat64");
int StatusOf64(int file, Status* status)
{
    return StatusOf(file, status);
}

int StatusAt(const char* path, Status* status) asm("stat");
int StatusAt(const char* path, Status* status)
{
    static auto* const real = Real<int(const char*, Status*)>("stat");
    return Pass("stat", {-1, path}, real, path, status);
}

int StatusAt64(const char* path, Status* status) asm("stat64");
int StatusAt64(const char* path, Status* status)
{
    return StatusAt(path, status);
}

int LinkStatusAt(const char* path, Status* status) asm("lstat");
int LinkStatusAt(const char* path, Status* status)
{
    static auto* const real = Real<int(const char*, Status*)>("lstat");
    return Pass("lstat", {-1, path}, real, path, status);
}

int LinkStatusAt64(const char* path, Status* status) asm("lstat64");
int LinkStatusAt64(const char* path, Status* status)
{
    return LinkStatusAt(path, status);
}

int StatusIn(int folder, const char* path, Status* status, int flags) asm("fstatat");
int StatusIn(int folder, const char* path, Status* status, int flags)
{
    static auto* const real = Real<int(int, const char*, Status*, int)>("fstatat");
    return Pass("fstatat", {folder, path}, real, folder, path, status, flags);
}

int StatusIn64(int folder, const char* path, Status* status, int flags) asm("fstatat64");
int StatusIn64(int folder, const char* path, Status* status, int flags)
{
    return StatusIn(folder, path, status, flags);
}

}  // namespace tessarine::torture
