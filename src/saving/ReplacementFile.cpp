#include "saving/ReplacementFile.h"

#include <array>
#include <cerrno>
#include <filesystem>

#include "files/FileFailure.h"
#include "files/FileLock.h"
#include "files/SystemErrors.h"
#include "log/ErrorLog.h"
#include "log/Warnings.h"
#include "platform/FolderOf.h"
#include "platform/NativePath.h"
#include "platform/PathSeparator.h"
#include "saving/NewFile.h"
#include "saving/ReplacementCalls.h"
#include "saving/RunJournal.h"
#include "saving/WriteOver.h"

namespace tessarine
{

namespace
{

/// Bytes that a write to the system takes at once. Zip files are written in many small pieces.
constexpr std::size_t bufferSize = 1 << 16;

constexpr const char* attemptToMakeNewFile = "save (no new file can be made beside it)";
constexpr const char* attemptToTakePlace = "save (the new file can't take the old one's place)";

bool IsClosed(int error)
{
    return error == EACCES || error == EPERM;
}

NativeString AbsolutePath(const NativeString& path)
{
    return std::filesystem::absolute(path).native();
}

}  // namespace

ReplacementFile::ReplacementFile(StringView path, Kind kind, OpenedFile* opened, const SaveTerms& terms, Effect effect)
    : kind_(kind),
      givenPath_(path),
      terms_(terms),
      effect_(effect),
      opened_(opened),
      place_(NativePath(path), kind == Kind::Copy ? FilePlace::Links::Refused : FilePlace::Links::FollowedIfOwn,
             [this](FileTrouble trouble, const NativeString& at, const std::string& reason) {
                 return FailureFor(trouble, at, reason);
             }),
      newFolder_(FolderOf(place_.path))
{
    if (const auto status = StatusIn(place_.folder, place_.name)) {
        old_ = status->state;
        oldNames_ = status->names;
    } else if (errno != ENOENT) {
        throw FailureFor(errno, "save");
    }
}

ReplacementFile::ReplacementFile(StringView path, Missing missing, const SaveTerms& terms)
    : ReplacementFile(path, Kind::Save, nullptr, terms)
{
    if (!old_ && missing == Missing::Fails)
        throw FailureFor(ENOENT, "save");
    if (old_)
        TakeAttributesOfOldFile();
    else
        attributes_ = KeptAttributes::OfNewFileIn(place_.folder);
    MakeNewFile();
}

ReplacementFile::ReplacementFile(StringView path, OpenedFile& opened, const SaveTerms& terms, Effect effect)
    : ReplacementFile(path, Kind::Save, &opened, terms, effect)
{
    if (!old_)
        throw FailureFor(ENOENT, "save");
    TakeAttributesOfOldFile();
    // After the look at its permissions: whoever has protected it since is told of that.
    if (old_ != opened.Expected())
        throw ChangedByOthers();
    effect == Effect::OnDisk ? MakeNewFile() : RehearseNewFile();
}

ReplacementFile::ReplacementFile(StringView path, const CopyOf& original)
    : ReplacementFile(path, Kind::Copy, nullptr, {})
{
    const auto folder = FileStateOf(place_.folder.get());
    if (original.folder && (!folder || folder->identity != *original.folder))
        throw FailureFor(FileTrouble::InUse, place_.path,
                         "another program has put another folder in place of its own; run it again");
    if (original.mustBeNew && old_)
        throw FailureFor(FileTrouble::NotPermitted, place_.path, "another file has this name already");
    original_ = original.original;
    attributes_ = KeptAttributes::Of(original_);
    if (!attributes_)
        throw FailureFor(errno, "save");
    MakeNewFile();
}

ReplacementFile::ReplacementFile(StringView path, const PutBack& copy)
    : ReplacementFile(path, Kind::PutBack, nullptr, copy.terms)
{
    const auto ofCopy = KeptAttributes::Of(copy.copy);
    if (!ofCopy)
        throw FailureFor(errno, "save");
    attributes_ = ofCopy;
    original_ = copy.copy;
    if (old_) {
        TakeAttributesOfOldFile();
        attributes_->TakeAccessFrom(*ofCopy);
    }
    MakeNewFile();
}

ReplacementFile::~ReplacementFile() = default;

void ReplacementFile::TakeAttributesOfOldFile()
{
    // Renaming over a file asks only the folder for permission; a file that its owner has protected stays protected.
    if (kind_ == Kind::Save && !MayTakePlace())
        throw FailureFor(errno, "save");
    if (opened_ != nullptr && opened_->State().identity == old_->identity) {
        attributes_ = KeptAttributes::Of(opened_->Descriptor());
    } else {
        const FileDescriptor file = OpenForAttributes(place_.folder, place_.name);
        attributes_ = file.IsOpen() ? KeptAttributes::Of(file.get()) : std::nullopt;
    }
    if (!attributes_)
        throw FailureFor(errno, "save (its attributes can't be read)");
}

bool ReplacementFile::MayTakePlace() const
{
    if (MayWrite(place_.folder, place_.name))
        return true;
    const int error = errno;
    // Who saves would have taken the protection away before.
    const bool isOwn = effect_ == Effect::Rehearsed && MayUnprotect(place_.folder, place_.name);
    errno = error;
    return isOwn;
}

void ReplacementFile::RehearseNewFile() const
{
    if (MayMakeFiles(place_.folder))
        return;
    const int error = errno;
    if (!IsClosed(error) || !terms_.inPlaceWhereFolderIsClosed || ApplicationDataFolder.empty())
        throw FailureFor(error, attemptToMakeNewFile);
}

void ReplacementFile::MakeNewFile()
{
    newFile_ = std::make_unique<NewFile>(place_.folder);
    if (!newFile_->IsOpen()) {
        const int error = errno;
        if (old_ && IsClosed(error) && terms_.inPlaceWhereFolderIsClosed && !ApplicationDataFolder.empty()) {
            newFolder_ = NativePath(ApplicationDataFolder + PathSeparator);
            otherFolder_ = HeldFolder(newFolder_);
            newFile_ = std::make_unique<NewFile>(otherFolder_);
        }
        if (!newFile_->IsOpen())
            throw FailureFor(error, attemptToMakeNewFile);
    }
    pending_.reserve(bufferSize);
}

Failure ReplacementFile::FailureFor(int error, const char* attempt) const
{
    return kind_ == Kind::Save ? SystemFileFailure(error, attempt, place_.path)
                               : ClassicFileFailure(error, "write", place_.path);
}

Failure ReplacementFile::FailureFor(FileTrouble trouble, const NativeString& path, const std::string& reason) const
{
    return kind_ == Kind::Save ? SystemFileFailure(trouble, "save", path, reason)
                               : ClassicFileFailure(trouble, "write", path, reason);
}

Failure ReplacementFile::ChangedByOthers() const
{
    return FailureFor(FileTrouble::InUse, place_.path,
                      std::string("it was changed by another program ") +
                          (opened_ != nullptr ? "since it was opened" : "while it was being saved") + "; run it again");
}

void ReplacementFile::WarnOf(const String& text) const
{
    Warn(givenPath_, text);
}

void ReplacementFile::WarnOf(const std::string& text) const
{
    WarnOf(FromUtf8(text));
}

void ReplacementFile::Write(std::span<const std::byte> bytes)
{
    if (effect_ == Effect::Rehearsed) {
        position_ += bytes.size();
        return;
    }
    // What is pending stays within the reserved size, unless one piece alone is longer.
    if (pending_.size() + bytes.size() > bufferSize)
        Flush();
    pending_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    position_ += bytes.size();
    if (pending_.size() >= bufferSize)
        Flush();
}

void ReplacementFile::Flush()
{
    if (!newFile_->Write(pending_))
        throw FailureFor(errno, "save");
    pending_.clear();
}

void ReplacementFile::CopyFrom(const RandomAccessBytes& source, std::uint64_t offset, std::uint64_t length)
{
    if (effect_ == Effect::Rehearsed) {
        position_ += length;
        return;
    }
    // The system copies from file to file without the way through this process, which pays for long ranges only.
    constexpr std::uint64_t worthACall = 16384;
    if (CanCopyRanges && source.Descriptor() != NoFile && length >= worthACall) {
        // The pending bytes stand before the range.
        Flush();
        const std::uint64_t count = CopyRange(source.Descriptor(), offset, newFile_->Descriptor(), length);
        offset += count;
        position_ += count;
        length -= count;
    }
    std::array<std::byte, bufferSize> buffer;
    while (length > 0) {
        const auto part = std::span(buffer).first(std::min<std::uint64_t>(buffer.size(), length));
        source.Read(offset, part);
        Write(part);
        offset += part.size();
        length -= part.size();
    }
}

void ReplacementFile::Commit()
{
    if (effect_ == Effect::Rehearsed) {
        CheckSource();
        CheckWriters();
        CheckPlace();
        WarnOfOtherNames();
        return;
    }
    Flush();
    CheckSource();
    // Each of the three asks for its own reasons; the attributes last, as it gives them.
    const bool isInPlace = otherFolder_.IsOpen() || (oldNames_ > 1 && terms_.inPlaceLinks) || !GiveAttributes();
    // Before the rename: after a power cut the name must not lead to a file without its bytes.
    if (!newFile_->FlushToDisk())
        throw FailureFor(errno, "save (flushing to the disk failed)");
    isInPlace ? WriteIntoOldFile() : TakePlace();
}

/// What was copied is not a mixture of two contents. The state alone is asked here; CheckPlace does the rest.
void ReplacementFile::CheckSource() const
{
    if (opened_ != nullptr && FileStateOf(opened_->Descriptor(), opened_->State().identity) != opened_->State())
        throw ChangedByOthers();
}

/// The file that is about to be replaced is the one that was opened, as it was then.
void ReplacementFile::CheckPlace() const
{
    if (FileStateIn(place_.folder, place_.name) != old_)
        throw ChangedByOthers();
    if (opened_ != nullptr && opened_->IsRacy() && !opened_->IsUnchanged())
        throw ChangedByOthers();
}

std::optional<KeptAttributes::NotKept> ReplacementFile::GiveTheirs() const
{
    return IsCopy() ? attributes_->GiveToCopy(newFile_->Descriptor()) : attributes_->GiveTo(newFile_->Descriptor());
}

/// False when they can't be given and the terms allow to write into the old file, which has them.
bool ReplacementFile::GiveAttributes()
{
    // After the last byte, as writing takes the set-user and set-group bits away.
    if (IsCopy())
        CopyStreams(original_, newFile_->Descriptor());
    const auto notKept = GiveTheirs();
    if (!notKept)
        return true;
    if (old_ && terms_.inPlaceWhereNotKept) {
        // As it has to be when the next start looks at it.
        MakeOwnAlone(newFile_->Descriptor());
        return false;
    }
    throw FailureFor(FileTrouble::NotPermitted, place_.path,
                     notKept->what + " can't be given to the new file (" + ErrorText(notKept->error) +
                         "); save it as its owner, or in place");
}

void ReplacementFile::TakePlace()
{
    NoteReplacement(place_.path, newFile_->Descriptor());
    const auto barrier = old_ ? WriteBarrier::On(place_.folder, place_.name) : WriteBarrier();
    if (!barrier)
        throw FailureFor(errno, attemptToTakePlace);
    CheckWriters();
    // Last of all: some changes show in no state once the rename itself has moved the time of the last change.
    CheckPlace();
    if (old_)
        TakePlaceOfOldFile();
    else
        TakeFreePlace();
    if (kind_ != Kind::Copy)
        WarnOfOtherNames();
}

void ReplacementFile::WarnOfOtherNames() const
{
    const std::uint64_t others = oldNames_ > 0 ? oldNames_ - 1 : 0;
    // Those of a file that is written in place show the new text.
    if (others == 0 || terms_.inPlaceLinks)
        return;
    WarnOf(others == 1 ? "has 1 more name that keeps the old text"
                       : "has " + std::to_string(others) + " more names that keep the old text");
}

void ReplacementFile::CheckWriters() const
{
    if (old_ && IsOpenForWriting(place_.folder, place_.name))
        throw FailureFor(FileTrouble::InUse, place_.path,
                         "another program has it open for writing; run it again when that has closed it");
}

void ReplacementFile::TakeFreePlace()
{
    if (!newFile_->TakeFreePlace(place_.name))
        throw errno == EEXIST ? ChangedByOthers() : FailureFor(errno, "save");
    const auto saved = StateOfSaved(newFile_->Descriptor());
    FlushPlace();
    NoteSaved(saved);
    newFile_->Release().Close();
}

/// Another program may put its own file there, or write to the old one, between any look and the rename. So the two
/// change places, and what came out is looked at: if it isn't the old file as it was, they change back.
void ReplacementFile::TakePlaceOfOldFile()
{
    const bool isExchanged = newFile_->ChangePlaces(place_.name);
    // Where the file system can't do that, the look right before the rename has to do.
    if (!isExchanged && ((errno != EINVAL && errno != ENOSYS) || !newFile_->TakePlace(place_.name)))
        throw FailureFor(errno, attemptToTakePlace);
    const bool isOldFileHeld = isExchanged && CheckWhatCameOut();
    GiveAttributesAgain();
    const auto saved = StateOfSaved(newFile_->Descriptor());
    FlushPlace();
    // Whoever has found the old file before the rename may get to open it only now: the flush takes long enough.
    if (isOldFileHeld && !WriteBarriersHold)
        CheckWhatCameOut();
    newFile_->Remove();
    NoteSaved(saved);
    FileDescriptor file = newFile_->Release();
    if (saved)
        FileLock::GiveTo(std::move(file), saved->identity, old_->identity);
}

/// Whether the old file, which has the temporary name now, is as it was. Where it isn't, and the two have changed back,
/// the save has failed; where they can't change back, the new file stays and so does what came out. False when there is
/// nothing left to look at.
bool ReplacementFile::CheckWhatCameOut()
{
    // In this order: who no longer has it open has written what there was to write.
    const bool isBeingWritten = IsOpenForWriting(place_.folder, newFile_->Name());
    const auto cameOut = FileStateIn(place_.folder, newFile_->Name());
    const int error = errno;
    if (cameOut && IsOldFile(*cameOut) && !isBeingWritten)
        return true;
    // A file that isn't locked, such as an old backup, may be taken for a leftover by another run.
    if (!cameOut && error == ENOENT)
        return false;
    if (GiveBack()) {
        FlushFolder(place_.folder);
        throw cameOut ? ChangedByOthers() : FailureFor(error, attemptToTakePlace);
    }
    const int reason = errno;
    WarnOf(u"is saved, but another program may have changed it meanwhile; what was there is kept as \"" +
           KeepWhatCameOut() + u"\" (" + FromUtf8(ErrorText(reason)) + u")");
    return false;
}

/// Where taking the place may have changed them, as it does on Windows.
void ReplacementFile::GiveAttributesAgain() const
{
    if (!TakingPlaceChangesAttributes || newFile_->Descriptor() == NoFile)
        return;
    if (const auto notKept = GiveTheirs())
        WarnOf("is saved, but " + notKept->what + " could not be kept (" + ErrorText(notKept->error) + ")");
}

/// The place gets back what came out of it, also where the new file is gone from there by now. False, with the reason
/// in errno, when it can't be.
bool ReplacementFile::GiveBack()
{
    if (!newFile_->ChangePlaces(place_.name))
        return errno == ENOENT && newFile_->TakeFreePlace(place_.name);
    // What somebody has put in place of the new file meanwhile, or written into it, is younger than both.
    const auto cameOut = FileStateIn(place_.folder, newFile_->Name());
    const auto own = FileStateOf(newFile_->Descriptor());
    const bool isNewFile = cameOut && own && cameOut->identity == own->identity;
    if (isNewFile && cameOut->size == position_)
        return true;
    if (!newFile_->ChangePlaces(place_.name)) {
        const int reason = errno;
        WarnOf(u"was changed by another program; its last change is kept as \"" + KeepWhatCameOut() + u"\" (" +
               FromUtf8(ErrorText(reason)) + u")");
    } else if (isNewFile) {
        // A writer may have left some of the new file's bytes, and then has not seen what came out before.
        WarnOf(u"was changed by another program more than once; what it held before its last change is kept as \"" +
               KeepWhatCameOut() + u"\"");
    }
    return true;
}

/// Gives what has the temporary name one that no run removes, where that can be done. Others may have written it.
String ReplacementFile::KeepWhatCameOut()
{
    const NativeString kept = place_.name + NativeName(".kept");
    return PathText(newFile_->TakeFreePlace(kept) ? kept : newFile_->Leave());
}

/// Whether this is the old file, which a rename has changed the last change of and nothing else.
bool ReplacementFile::IsOldFile(const FileState& state) const
{
    return state.identity == old_->identity && state.size == old_->size && state.lastWrite == old_->lastWrite &&
           (opened_ == nullptr || opened_->HasSameContent());
}

void ReplacementFile::WriteIntoOldFile()
{
    const FileDescriptor file = OpenForWriting(place_.folder, place_.name);
    if (!file.IsOpen())
        throw FailureFor(errno, "save (in place)");
    CheckPlace();
    if (const auto state = FileStateOf(file.get()); !state || state->identity != old_->identity)
        throw ChangedByOthers();
    InPlaceWrite noted(AbsolutePath(place_.path), file.get(), AbsolutePath(newFolder_ + newFile_->Name()));
    // While the old content is still there. Noted before, because asking for room gives the file a new date.
    if (!HasRoomFor(file.get(), position_)) {
        const int error = errno;
        noted.End();
        throw FailureFor(error, "save (in place)");
    }
    if (!WriteOver(file.get(), newFile_->Descriptor(), position_)) {
        const int error = errno;
        throw FailureFor(FileTroubleOf(error, place_.path), place_.path,
                         ErrorText(error) + ", half way; the next start completes it from \"" +
                             ToUtf8(PathText(noted.Copy())) + "\", which holds the whole new content");
    }
    // Closed first: on Windows a file that is deleted keeps its name until it is closed.
    newFile_->Release().Close();
    noted.End();
    isWrittenInPlace_ = true;
    NoteSaved(StateOfSaved(file.get()));
}

/// Without it the rename may not last.
void ReplacementFile::FlushPlace() const
{
    if (!FlushFolder(place_.folder))
        WarnOf("its folder could not be flushed to the disk (" + ErrorText(errno) +
               "); a power cut may bring the old content back");
}

std::optional<FileState> ReplacementFile::StateOfSaved(NativeFile file) const
{
    const auto state = FileStateOf(file);
    if (!state)
        WarnOf("is saved, but the system doesn't tell its new state (" + ErrorText(errno) + ")");
    return state;
}

void ReplacementFile::NoteSaved(const std::optional<FileState>& saved) const
{
    if (saved && opened_ != nullptr)
        opened_->NoteOwnSave(*saved);
}

}  // namespace tessarine
