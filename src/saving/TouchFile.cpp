#include <cerrno>

#include "files/FileFailure.h"
#include "platform/NativePath.h"
#include "saving/DateOfTouch.h"
#include "saving/ReplacementCalls.h"
#include "saving/ReplacementFile.h"
#include "saving/RunJournal.h"

namespace tessarine
{

namespace
{

FilePlace PlaceOf(StringView path)
{
    return {NativePath(path), FilePlace::Links::FollowedIfOwn,
            [](FileTrouble trouble, const NativeString& at, const std::string& reason) {
                return SystemFileFailure(trouble, "save", at, reason);
            }};
}

void CheckIsAsOpened(const FilePlace& place, const OpenedFile& opened)
{
    if (FileStateIn(place.folder, place.name) != opened.Expected() || (opened.IsRacy() && !opened.IsUnchanged()))
        throw SystemFileFailure(FileTrouble::InUse, "save", place.path,
                                "it was changed by another program since it was opened; run it again");
}

}  // namespace

void TouchFile(StringView path, OpenedFile& opened)
{
    const FilePlace place = PlaceOf(path);
    if (!MayWrite(place.folder, place.name))
        throw SystemFileFailure(errno, "save", place.path);
    CheckIsAsOpened(place, opened);
    // By the file that is open, unless a save has put another one in its place.
    FileDescriptor saved;
    if (opened.Expected().identity != opened.State().identity || !CanSetDatesOfReadFiles)
        saved = OpenForDate(place.folder, place.name);
    const NativeFile file = saved.IsOpen() ? saved.get() : opened.Descriptor();
    // A date of our own choice, not the system's now: the journal must know it before the file has it.
    const timespec date = DateOfTouch();
    NoteNewDate(file, date);
    if (!PutDateOfTouch(file, date))
        throw SystemFileFailure(errno, "save", place.path);
    if (const auto state = FileStateOf(file))
        opened.NoteOwnSave(*state);
}

void RehearseTouch(StringView path, const OpenedFile& opened)
{
    const FilePlace place = PlaceOf(path);
    if (!MayWrite(place.folder, place.name)) {
        const int error = errno;
        // Who saves would have taken the protection away before.
        if (!MayUnprotect(place.folder, place.name))
            throw SystemFileFailure(error, "save", place.path);
    }
    CheckIsAsOpened(place, opened);
}

}  // namespace tessarine
