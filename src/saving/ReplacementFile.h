#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "files/FilePlace.h"
#include "files/FileState.h"
#include "files/OpenedFile.h"
#include "files/RandomAccessFile.h"
#include "platform/String.h"
#include "saving/KeptAttributes.h"
#include "saving/SaveTerms.h"

namespace tessarine
{

class NewFile;

/// A new content for a file, all or nothing: written to a new file beside the old one, and only when it is complete
/// and on the disk renamed over it. Whatever happens before Commit has returned (failure, kill, power cut), the path
/// names the old file or the complete new one.
///
/// Nobody else's file is touched: a path that is a link is followed only as FilePlace::Links tells, the folder is held
/// open from the beginning, and what others have done to the file meanwhile is noticed before it would be lost.
/// Nobody gets more access than to the old file, not for a moment: until Commit only this process's user may read the
/// new one, and then it has the old one's owner, group, mode, access list and extended attributes (KeptAttributes).
///
/// Failures are of the system's family (SystemFileFailure) for saves, of the classic one (ClassicFileFailure) for
/// copies. Beside those of the system (`AccessDenied` for a protected file or folder, `SystemDiskFull` and so on) there
/// are
/// - `SharingViolation` for a file that others have changed, replaced or removed since it was opened, with a text that
///   says so;
/// - `AccessDenied` for a link that isn't followed, and for attributes that can't be kept;
/// - `FileNotFound` for a path with a NUL.
class ReplacementFile
{
public:
    /// What becomes of a path without a file: a failure, or a file with the attributes of any new one.
    enum class Missing { Fails, IsMade };

    /// A copy of an open file, with its attributes as far as they can be kept (KeptAttributes::GiveToCopy). The path
    /// must not be a link. There need be no old file, and one that is read-only is replaced all the same: whoever backs
    /// up a read-only file twice has a read-only backup in the way. `folder` and `mustBeNew` as in CopyTerms.
    struct CopyOf {
        NativeFile original;
        std::optional<FileIdentity> folder = {};
        bool mustBeNew = false;
    };

    /// A document that is put back from an open copy of it. As a save of the document, but for mode and access list:
    /// these come back with the copy (KeptAttributes::TakeAccessFrom). A read-only document is replaced, too.
    struct PutBack {
        NativeFile copy;
        SaveTerms terms = {};
    };

    /// The new content of a file that was not opened before, or that is to be made. An old file must be one that this
    /// process may write, and must stay as it is from here on to Commit.
    explicit ReplacementFile(StringView path, Missing missing = Missing::Fails, const SaveTerms& terms = {});

    /// Whether a save reaches the disk. A rehearsed one raises and warns as the save itself would as far as that shows
    /// without a new file: whoever may write here, whether the file is as it was and nobody writes into it. What is
    /// written goes nowhere. A read-only file passes where this process may change that.
    enum class Effect { OnDisk, Rehearsed };

    /// The new content of a file that was opened before, which must have stayed as it was since. `opened` is borrowed,
    /// and told of the save (OpenedFile::NoteOwnSave).
    ReplacementFile(StringView path, OpenedFile& opened, const SaveTerms& terms = {}, Effect effect = Effect::OnDisk);

    ReplacementFile(StringView path, const CopyOf& original);
    ReplacementFile(StringView path, const PutBack& copy);

    /// Removes the new file unless it was committed.
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    void Write(std::span<const std::byte> bytes);  ///< In small pieces, too: they are gathered.

    /// Appends a range of another file without holding it in memory.
    void CopyFrom(const RandomAccessBytes& source, std::uint64_t offset, std::uint64_t length);

    std::uint64_t Position() const { return position_; }  ///< Bytes written so far.

    /// Gives the new file its attributes, flushes it, renames it over the old one and flushes the folder; or writes it
    /// into the old file, where the terms say so and nothing else will do.
    ///
    /// What goes wrong once the new content is in place is no failure but a warning (Warn), and so are other names of
    /// the old file that keep the old content. A write into the old file that breaks off is one: its text says where
    /// the whole new content lies.
    void Commit();

    /// True when Commit wrote into the old file: whoever has it open sees the new content.
    bool WasWrittenInPlace() const { return isWrittenInPlace_; }

private:
    enum class Kind { Save, Copy, PutBack };

    ReplacementFile(StringView path, Kind kind, OpenedFile* opened, const SaveTerms& terms,
                    Effect effect = Effect::OnDisk);  // what all have in common
    void TakeAttributesOfOldFile();
    void MakeNewFile();
    void RehearseNewFile() const;
    bool MayTakePlace() const;  // of the old file, by its permissions; errno tells why not
    void Flush();
    void CheckSource() const;
    void CheckPlace() const;
    void CheckWriters() const;
    void WarnOfOtherNames() const;
    bool IsCopy() const { return kind_ == Kind::Copy || (kind_ == Kind::PutBack && !old_); }
    std::optional<KeptAttributes::NotKept> GiveTheirs() const;
    bool GiveAttributes();
    void TakePlace();
    void TakeFreePlace();
    void TakePlaceOfOldFile();
    bool CheckWhatCameOut();
    void GiveAttributesAgain() const;
    bool GiveBack();
    String KeepWhatCameOut();
    bool IsOldFile(const FileState& state) const;
    void WriteIntoOldFile();
    void FlushPlace() const;
    std::optional<FileState> StateOfSaved(NativeFile file) const;  // warns when the system doesn't tell it
    void NoteSaved(const std::optional<FileState>& saved) const;
    void WarnOf(const String& text) const;
    void WarnOf(const std::string& text) const;
    Failure FailureFor(int error, const char* attempt) const;  // of the family of its kind
    Failure FailureFor(FileTrouble trouble, const NativeString& path, const std::string& reason) const;
    Failure ChangedByOthers() const;

    Kind kind_;
    String givenPath_;  // for warnings
    SaveTerms terms_;
    Effect effect_;
    OpenedFile* opened_;
    FilePlace place_;
    std::optional<FileState> old_;  // what the place held at the beginning, or when `opened_` was opened
    std::uint64_t oldNames_ = 0;    // of the old file
    std::optional<KeptAttributes> attributes_;
    NativeFile original_ = NoFile;  // of a copy
    HeldFolder otherFolder_;        // of a new file that can't be made beside the old one
    NativeString newFolder_;        // path of the folder that the new file is made in, as FolderOf gives it
    std::unique_ptr<NewFile> newFile_;
    std::uint64_t position_ = 0;
    std::string pending_;  // small writes gathered into one
    bool isWrittenInPlace_ = false;
};

/// Moves a file's modification time to now without touching its bytes; in a file of another owner that this process may
/// write, the access time goes with it. Raises as SystemFileFailure tells, `FileNotFound` for a path with a NUL.
void TouchFile(StringView path);

/// The same for a file that is open already. Raises `SharingViolation` when the path leads to another one, or others
/// have changed it since it was opened.
void TouchFile(StringView path, OpenedFile& opened);

/// What TouchFile does before it moves the time: raises what it would raise.
void RehearseTouch(StringView path, const OpenedFile& opened);

}  // namespace tessarine
