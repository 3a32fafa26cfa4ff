#include "run/RestoreFile.h"

#include "files/FileLock.h"
#include "files/Files.h"
#include "platform/Failure.h"

namespace tessarine
{

void RestoreFile(const String& backup, const String& path, bool takesReadOnly, const CopyComplete& complete)
{
    const FileLock lock(path);
    if (FileExists(path) && !takesReadOnly && (GetAttributes(path).bits & FileAttribute::ReadOnly) != 0)
        throw Failure(FailureNumber::PermissionDenied,
                      u"Permission denied: could not write " + path + u" (it is read-only)");
    CopyFileBack(backup, path, {}, complete);
}

}  // namespace tessarine
