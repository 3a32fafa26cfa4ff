#include "files/FilePlace.h"

#include <cerrno>

#include "files/FileOwner.h"
#include "files/FileState.h"
#include "files/SystemErrors.h"
#include "files/WindowsErrors.h"
#include "files/WindowsFiles.h"
#include "platform/FolderOf.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

FilePlace::FilePlace(const NativeString& givenPath, Links links, const MakeFailure& failure)
    : path(givenPath), folder(NativeString(FolderOf(path))), name(FileNameOf(NativeStringView(path)))
{
    const auto fail = [&](int error) -> Failure { return failure(FileTroubleOf(error, path), path, ErrorText(error)); };
    if (!folder.IsOpen())
        throw fail(errno);
    if (name.empty())
        throw fail(ENOENT);

    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        LeaveErrorInErrno();
        if (errno == ENOENT)
            return;
        throw fail(errno);
    }
    // Most files are no links, which this one look tells.
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
            throw fail(EISDIR);
        return;
    }
    const auto itself = StatusIn(folder, name, Look::WithOwner);
    if (!itself)
        throw fail(errno);
    if (itself->kind == FileKind::Folder)
        throw fail(EISDIR);
    if (itself->kind != FileKind::Link)
        return;

    if (links == Links::Refused)
        throw failure(FileTrouble::NotPermitted, path, "it is a link; move that away");
    if (!IsThisUser(itself->owner) && !IsSuperuser(itself->owner))
        throw failure(FileTrouble::NotPermitted, path,
                      "it is a link that belongs to another user; name the file by its own path");
    const FileDescriptor end = OpenExisting(path, FILE_READ_ATTRIBUTES | READ_CONTROL);
    const auto status = end.IsOpen() ? StatusOf(end.get(), Look::WithOwner) : std::nullopt;
    const NativeString finalPath = status ? FinalPathOf(end.get()) : NativeString();
    if (finalPath.empty())
        throw fail(errno);
    if (status->kind != FileKind::File)
        throw fail(EISDIR);
    path = finalPath;
    name = FileNameOf(NativeStringView(path));
    folder = HeldFolder(NativeString(FolderOf(path)));
    const auto around = folder.IsOpen() ? StatusAt(NativeString(FolderOf(path)), Look::WithOwner) : std::nullopt;
    if (!around)
        throw fail(errno);
    if (!IsThisUser(status->owner) || !IsThisUser(around->owner))
        throw failure(FileTrouble::NotPermitted, path,
                      "a link leads there, and it or its folder belongs to another user; name it by its own path");
}

}  // namespace tessarine
