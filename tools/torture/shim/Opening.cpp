// Opening, closing, and reading what lies in folders.
#include <dirent.h>
#include <fcntl.h>
#include <sys/types.h>

#include <cstdarg>
#include <string>

#include "shim/Recorder.h"
#include "shim/StandIn.h"

namespace tessarine::torture
{

namespace
{

/// Only a call that may make a file has a mode.
mode_t ModeOf(int flags, va_list arguments)
{
    const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return makes ? va_arg(arguments, mode_t) : 0;
}

int Open(const char* call, int folder, const char* path, int flags, mode_t mode)
{
    static auto* const real = Real<int(int, const char*, int, ...)>("openat");
    if (const int error = Meet(call, {folder, path})) {
        errno = error;
        return -1;
    }
    const bool wasThere = (flags & O_CREAT) == 0 || !record::IsWanted() || record::IsThere(folder, path);
    const int file = real(folder, path, flags, mode);
    if (file >= 0)
        record::Opened(file, folder, path, wasThere, flags);
    return file;
}

int MakeTemporary(const char* call, char* path, int flags, int suffix = 0)
{
    static auto* const real = Real<int(char*, int, int)>("mkostemps");
    const int file = Pass(call, {-1, path}, real, path, suffix, flags);
    if (file >= 0)
        record::Opened(file, AT_FDCWD, path, false, flags);
    return file;
}

}  // namespace

int OpenPath(const char* path, int flags, ...) asm("open");
int OpenPath(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open("open", AT_FDCWD, path, flags, mode);
}

int OpenPath64(const char* path, int flags, ...) asm("open64");
int OpenPath64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open("open", AT_FDCWD, path, flags, mode);
}

int OpenIn(int folder, const char* path, int flags, ...) asm("openat");
int OpenIn(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open("openat", folder, path, flags, mode);
}

int OpenIn64(int folder, const char* path, int flags, ...) asm("openat64");
int OpenIn64(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Open("openat", folder, path, flags, mode);
}

int MakeTemporaryFile(char* path) asm("mkstemp");
int MakeTemporaryFile(char* path)
{
    return MakeTemporary("mkstemp", path, 0);
}

int MakeTemporaryFile64(char* path) asm("mkstemp64");
int MakeTemporaryFile64(char* path)
{
    return MakeTemporary("mkstemp", path, 0);
}

int MakeOpenTemporaryFile(char* path, int flags) asm("mkostemp");
int MakeOpenTemporaryFile(char* path, int flags)
{
    return MakeTemporary("mkostemp", path, flags);
}

int MakeOpenTemporaryFile64(char* path, int flags) asm("mkostemp64");
int MakeOpenTemporaryFile64(char* path, int flags)
{
    return MakeTemporary("mkostemp", path, flags);
}

int MakeTemporaryFileOfKind(char* path, int suffix, int flags) asm("mkostemps");
int MakeTemporaryFileOfKind(char* path, int suffix, int flags)
{
    return MakeTemporary("mkostemps", path, flags, suffix);
}

int MakeTemporaryFileOfKind64(char* path, int suffix, int flags) asm("mkostemps64");
int MakeTemporaryFileOfKind64(char* path, int suffix, int flags)
{
    return MakeTemporary("mkostemps", path, flags, suffix);
}

/// A close that fails has closed all the same.
int Close(int file) asm("close");
int Close(int file)
{
    static auto* const real = Real<int(int)>("close");
    const int error = Meet("close", {file});
    const int result = real(file);
    if (error == 0)
        return result;
    errno = error;
    return -1;
}

DIR* OpenFolder(const char* path) asm("opendir");
DIR* OpenFolder(const char* path)
{
    static auto* const real = Real<DIR*(const char*)>("opendir");
    return Pass("opendir", {-1, path}, real, path);
}

DIR* OpenFolderOf(int folder) asm("fdopendir");
DIR* OpenFolderOf(int folder)
{
    static auto* const real = Real<DIR*(int)>("fdopendir");
    return Pass("fdopendir", {folder}, real, folder);
}

dirent* ReadFolder(DIR* folder) asm("readdir");
dirent* ReadFolder(DIR* folder)
{
    static auto* const real = Real<dirent*(DIR*)>("readdir");
    return Pass("readdir", {dirfd(folder)}, real, folder);
}

dirent64* ReadFolder64(DIR* folder) asm("readdir64");
dirent64* ReadFolder64(DIR* folder)
{
    static auto* const real = Real<dirent64*(DIR*)>("readdir64");
    return Pass("readdir", {dirfd(folder)}, real, folder);
}

}  // namespace tessarine::torture
