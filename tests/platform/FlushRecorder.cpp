#include "FlushRecorder.h"

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tessarine
{

namespace
{

FlushRecorder* recorder = nullptr;

}  // namespace

FlushRecorder::FlushRecorder()
{
    recorder = this;
}

FlushRecorder::~FlushRecorder()
{
    recorder = nullptr;
}

void NoteFlush(int descriptor)
{
    struct stat status = {};
    if (recorder != nullptr && fstat(descriptor, &status) == 0)
        recorder->flushed_.emplace_back(S_ISDIR(status.st_mode) ? "folder" : "file");
}

}  // namespace tessarine

/// Takes the place of the C library's own in this program.
extern "C" int fsync(int descriptor)
{
    tessarine::NoteFlush(descriptor);
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}
