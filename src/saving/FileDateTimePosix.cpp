#include "saving/FileDateTime.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "files/FileDescriptor.h"
#include "files/FileFailure.h"
#include "files/KnownFile.h"
#include "log/Treatments.h"
#include "platform/NativePath.h"

namespace tessarine
{

FileTimes GetFileDateTime(StringView path)
{
    FileTimes times;
    // Passed over: times that can't be read are not valid, and SetFileDateTime leaves the file's own alone.
    Skip([&] {
        struct stat status = {};
        if (stat(NativePath(path).c_str(), &status) == 0)
            times = {status.st_atim, status.st_mtim, true, {status.st_dev, status.st_ino}};
    });
    return times;
}

bool SetFileDateTime(StringView path, const FileTimes& times)
{
    return LogAndReturn({u"SetFileDateTime", u"Module modFileDateTime at time"}, [&] {
        if (!times.valid)
            return false;
        const std::string nativePath = NativePath(path);
        if (faccessat(AT_FDCWD, nativePath.c_str(), W_OK, AT_EACCESS) != 0)
            return false;
        // Opened for writing, as the times of a file that can't be written stay.
        const FileDescriptor file = OpenKnownFile(nativePath, times.file, KnownFileUse::Times, "set the times of");
        const timespec accessAndWrite[] = {times.lastAccess, times.lastWrite};
        if (futimens(file.get(), accessAndWrite) != 0)
            throw ClassicFileFailure(errno, "set the times of", nativePath);
        return true;
    });
}

}  // namespace tessarine
