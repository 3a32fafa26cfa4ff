#include "FlushRecorder.h"

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

namespace tessarine
{

namespace
{

FlushRecorder* flushRecorder = nullptr;

}  // namespace

FlushRecorder::FlushRecorder()
{
    flushRecorder = this;
}

FlushRecorder::~FlushRecorder()
{
    flushRecorder = nullptr;
}

/// False when the flush is to fail.
bool NoteFlush(int descriptor)
{
    struct stat status = {};
    if (flushRecorder == nullptr || fstat(descriptor, &status) != 0)
        return true;
    const bool isFolder = S_ISDIR(status.st_mode);
    flushRecorder->flushed_.emplace_back(isFolder ? "folder" : "file");
    if (isFolder && flushRecorder->beforeFolder_)
        std::exchange(flushRecorder->beforeFolder_, {})();
    return !isFolder || !flushRecorder->failsFolders_;
}

}  // namespace tessarine

/// Takes the place of the C library's own in this program.
extern "C" int fsync(int descriptor)
{
    if (!tessarine::NoteFlush(descriptor)) {
        errno = EIO;
        return -1;
    }
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}
