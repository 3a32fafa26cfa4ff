#include "files/KnownFile.h"

#include <cerrno>
#include <string>

#include "files/FileFailure.h"
#include "files/FileLock.h"
#include "files/FileOwner.h"
#include "files/WindowsFiles.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

bool IsOwnAndAlone(const NativeString& path, const FileDescriptor& file)
{
    const auto opened = StatusOf(file.get(), Look::WithOwner);
    const FileDescriptor itself = OpenItself(path, FILE_READ_ATTRIBUTES);
    const auto named = itself.IsOpen() ? StatusOf(itself.get()) : std::nullopt;
    return opened && named && opened->names == 1 && IsThisUser(opened->owner) &&
           named->state.identity == opened->state.identity;
}

}  // namespace

FileDescriptor OpenKnownFile(const NativeString& path, const FileIdentity& known, KnownFileUse use, const char* action)
{
    // Not shared with programs that are about to delete it, as the system's own examples for setting times have it.
    FileDescriptor file = use == KnownFileUse::Times
                              ? OpenExisting(path, GENERIC_WRITE | FILE_READ_ATTRIBUTES | READ_CONTROL,
                                             FILE_SHARE_READ | FILE_SHARE_WRITE)
                              : OpenForAttributeChange(path);
    const auto status = file.IsOpen() ? StatusOf(file.get()) : std::nullopt;
    if (!status)
        throw ClassicFileFailure(errno, action, path);
    const FileIdentity& identity = status->state.identity;
    if (status->kind != FileKind::File ||
        !(identity == known || FileLock::IsHeldHere(identity) || IsOwnAndAlone(path, file)))
        throw ClassicFileFailure(FileTrouble::NotPermitted, action, path, "another file has taken its place");
    return file;
}

}  // namespace tessarine
