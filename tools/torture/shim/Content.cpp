// Reading, writing, cutting off and flushing what is in files.
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "shim/Recorder.h"
#include "shim/StandIn.h"

namespace tessarine::torture
{

namespace
{

std::uint64_t PositionOf(int file)
{
    if ((syscall(SYS_fcntl, file, F_GETFL) & O_APPEND) != 0)
        return static_cast<std::uint64_t>(syscall(SYS_lseek, file, 0, SEEK_END));
    return static_cast<std::uint64_t>(syscall(SYS_lseek, file, 0, SEEK_CUR));
}

ssize_t WriteAt(const char* call, int file, const void* bytes, std::size_t count, off_t offset)
{
    static auto* const real = Real<ssize_t(int, const void*, std::size_t, off_t)>("pwrite");
    int error = Meet(call, {file});
    const std::size_t room = Room(file, count);
    if (error == 0 && room == 0 && count != 0)
        error = ENOSPC;
    if (error != 0) {
        errno = error;
        return -1;
    }
    const ssize_t written = real(file, bytes, room, offset);
    if (written > 0)
        record::Written(file, static_cast<std::uint64_t>(offset), bytes, static_cast<std::size_t>(written));
    return written;
}

int CutOff(const char* call, int file, off_t length)
{
    static auto* const real = Real<int(int, off_t)>("ftruncate");
    const int result = Pass(call, {file}, real, file, length);
    if (result == 0)
        record::CutOff(file, static_cast<std::uint64_t>(length));
    return result;
}

int Flush(const char* call, int file)
{
    static auto* const real = Real<int(int)>("fsync");
    const int result = Pass(call, {file}, real, file);
    if (result == 0)
        record::Flushed(file);
    return result;
}

}  // namespace

ssize_t Read(int file, void* bytes, std::size_t count) asm("read");
ssize_t Read(int file, void* bytes, std::size_t count)
{
    static auto* const real = Real<ssize_t(int, void*, std::size_t)>("read");
    return Pass("read", {file}, real, file, bytes, count);
}

ssize_t ReadAt(int file, void* bytes, std::size_t count, off_t offset) asm("pread");
ssize_t ReadAt(int file, void* bytes, std::size_t count, off_t offset)
{
    static auto* const real = Real<ssize_t(int, void*, std::size_t, off_t)>("pread");
    return Pass("pread", {file}, real, file, bytes, count, offset);
}

ssize_t ReadAt64(int file, void* bytes, std::size_t count, off_t offset) asm("pread64");
ssize_t ReadAt64(int file, void* bytes, std::size_t count, off_t offset)
{
    return ReadAt(file, bytes, count, offset);
}

ssize_t Write(int file, const void* bytes, std::size_t count) asm("write");
ssize_t Write(int file, const void* bytes, std::size_t count)
{
    static auto* const real = Real<ssize_t(int, const void*, std::size_t)>("write");
    int error = Meet("write", {file});
    const std::size_t room = Room(file, count);
    if (error == 0 && room == 0 && count != 0)
        error = ENOSPC;
    if (error != 0) {
        errno = error;
        return -1;
    }
    const std::uint64_t offset = record::IsWanted() ? PositionOf(file) : 0;
    const ssize_t written = real(file, bytes, room);
    if (written > 0)
        record::Written(file, offset, bytes, static_cast<std::size_t>(written));
    return written;
}

ssize_t PutAt(int file, const void* bytes, std::size_t count, off_t offset) asm("pwrite");
ssize_t PutAt(int file, const void* bytes, std::size_t count, off_t offset)
{
    return WriteAt("pwrite", file, bytes, count, offset);
}

ssize_t PutAt64(int file, const void* bytes, std::size_t count, off_t offset) asm("pwrite64");
ssize_t PutAt64(int file, const void* bytes, std::size_t count, off_t offset)
{
    return WriteAt("pwrite", file, bytes, count, offset);
}

ssize_t CopyRange(int source, off_t* from, int target, off_t* to, std::size_t count,
                  unsigned flags) asm("copy_file_range");
ssize_t CopyRange(int source, off_t* from, int target, off_t* to, std::size_t count, unsigned flags)
{
    static auto* const real = Real<ssize_t(int, off_t*, int, off_t*, std::size_t, unsigned)>("copy_file_range");
    int error = Meet("copy_file_range", {target});
    const std::size_t room = Room(target, count);
    if (error == 0 && room == 0 && count != 0)
        error = ENOSPC;
    if (error != 0) {
        errno = error;
        return -1;
    }
    const std::uint64_t sourceOffset = from == nullptr ? PositionOf(source) : static_cast<std::uint64_t>(*from);
    const std::uint64_t offset = to == nullptr ? PositionOf(target) : static_cast<std::uint64_t>(*to);
    const ssize_t copied = real(source, from, target, to, room, flags);
    if (copied > 0)
        record::CopiedFrom(source, sourceOffset, target, offset, static_cast<std::size_t>(copied));
    return copied;
}

int CutOffFile(int file, off_t length) asm("ftruncate");
int CutOffFile(int file, off_t length)
{
    return CutOff("ftruncate", file, length);
}

int CutOffFile64(int file, off_t length) asm("ftruncate64");
int CutOffFile64(int file, off_t length)
{
    return CutOff("ftruncate", file, length);
}

int FlushFile(int file) asm("fsync");
int FlushFile(int file)
{
    return Flush("fsync", file);
}

int FlushData(int file) asm("fdatasync");
int FlushData(int file)
{
    return Flush("fdatasync", file);
}

}  // namespace tessarine::torture
