#include "platform/FileDateTime.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "platform/FileDescriptor.h"
#include "platform/FileFailure.h"
#include "platform/NativePath.h"
#include "platform/Treatments.h"

namespace tessarine
{

FileTimes GetFileDateTime(StringView path)
{
    FileTimes times;
    // Passed over: times that can't be read are not valid, and SetFileDateTime leaves the file's own alone.
    Skip([&] {
        struct stat status = {};
        if (stat(NativePath(path).c_str(), &status) == 0)
            times = {status.st_atim, status.st_mtim, true};
    });
    return times;
}

bool SetFileDateTime(StringView path, const FileTimes& times)
{
    return LogAndReturn({u"SetFileDateTime", u"Module modFileDateTime at time"}, [&] {
        if (!times.valid)
            return false;
        const std::string nativePath = NativePath(path);
        // Opened for writing, so that a file that can't be written keeps its times; and without waiting for the other
        // end of a named pipe.
        const FileDescriptor file(open(nativePath.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
        if (!file.IsOpen())
            return false;
        const timespec accessAndWrite[] = {times.lastAccess, times.lastWrite};
        if (futimens(file.get(), accessAndWrite) != 0)
            throw ClassicFileFailure(errno, "set the times of", nativePath);
        return true;
    });
}

}  // namespace tessarine
