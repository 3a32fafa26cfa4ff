#include "files/AppendToFile.h"

#include <cerrno>

#include "files/FileFailure.h"
#include "files/FileLock.h"
#include "files/WindowsErrors.h"
#include "files/WindowsFiles.h"
#include "files/WriteAll.h"
#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

/// Opens the file, or makes it. Whoever could put a link there doesn't decide where the bytes go.
FileDescriptor OpenForAppending(const NativeString& path)
{
    // Without the right to write elsewhere than at the end. Locks ask for a right to read.
    FileDescriptor file(CreateFileW(path.c_str(), FILE_APPEND_DATA | GENERIC_READ | SYNCHRONIZE, SharedWithAll, nullptr,
                                    OPEN_ALWAYS, FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!file.IsOpen())
        LeaveErrorInErrno();
    return file;
}

FileFacts StatusOfFile(const FileDescriptor& file, const NativeString& path)
{
    const auto status = file.IsOpen() ? StatusOf(file.get()) : std::nullopt;
    if (!status)
        throw ClassicFileFailure(errno, "open", path);
    if (status->kind != FileKind::File)
        throw ClassicFileFailure(EACCES, "write (it is not a file)", path);
    return *status;
}

/// Renames a full file. Of several processes at once only one does so: the others find another file under the name.
void PutAway(const FileDescriptor& file, const FileFacts& opened, const NativeString& path)
{
    // Passed over: lines are better kept in a file that has grown too long than lost.
    if (TryToLock(file.get()) != LockAttempt::Locked)
        return;
    const auto named = StatusAt(path);
    if (named && named->state.identity == opened.state.identity)
        MoveFileExW(path.c_str(), (path + L".old").c_str(), MOVEFILE_REPLACE_EXISTING);
}

}  // namespace

void AppendToFile(StringView path, std::string_view bytes, std::uint64_t limit)
{
    const NativeString native = NativePath(path);
    FileDescriptor file = OpenForAppending(native);
    const FileFacts status = StatusOfFile(file, native);
    if (status.state.size >= limit) {
        PutAway(file, status, native);
        file = OpenForAppending(native);
        static_cast<void>(StatusOfFile(file, native));
    }
    // One call as a rule, which the system puts at the end in one piece.
    if (!WriteAll(file.get(), bytes))
        throw ClassicFileFailure(errno, "write", native);
}

}  // namespace tessarine
