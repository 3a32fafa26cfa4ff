#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/NativePath.h"
#include "platform/String.h"
#include "run/BackupRecord.h"
#include "saving/CopyFile.h"

namespace tessarine
{

/// The backups of one folder, and the record that tells which of them this program has made (docs/formats/backups.md).
///
/// Works on the folder that was opened, whatever its path leads to later. A record or a backup is only believed when it
/// belongs to this process's user, to the superuser or to the owner of the original, so that nobody else who may write
/// into the folder can pass a file of their own off as a backup. Names are those of files in the folder.
///
/// Raises as ClassicFileFailure tells where nothing else is said.
class BackupFolder
{
public:
    /// The folder of a path, as FolderOf gives it; an empty one is the current folder.
    explicit BackupFolder(StringView folder);

    ~BackupFolder();
    BackupFolder(const BackupFolder&) = delete;
    BackupFolder& operator=(const BackupFolder&) = delete;

    FileIdentity Id() const;  ///< Of the folder itself.

    /// Whether a name in the folder leads to this file, also by a link.
    bool Holds(const String& name, const FileIdentity& file) const;

    /// A file that backups may be of.
    struct Original {
        String name;                       ///< As RecordedBackup::original.
        std::optional<std::string> owner;  ///< FileFacts::owner; nothing when the file is missing.
    };
    /// The original at `path` as the record of this folder names it.
    Original OriginalAt(const String& path) const;

    /// What stands under the name of a backup.
    enum class State {
        Missing,      ///< Nothing.
        NotAFile,     ///< A link, a folder or another thing that is no file.
        NotRecorded,  ///< A file that no record names, or one of an owner who is not believed.
        OfAnother,    ///< The record says that it is the backup of another file.
        Changed,      ///< This program's backup of the original, but it holds something else by now.
        Intact,       ///< This program's backup of the original, as it was made.
    };
    /// Reads the backup to its end where the record alone doesn't decide.
    State StateOf(const String& name, const Original& original);

    /// The names under which backups of the original have been recorded, each once, in the order of the record. Some
    /// may be missing by now.
    std::vector<String> NamesFor(const Original& original);

    /// Whether the record says that `name` had this content as a backup of the original. Doesn't look at the file.
    bool IsRecorded(const String& name, const Original& original, const CopiedContent& content) const;

    bool IsTaken(const String& name) const;  ///< Anything is there, a link to nothing too.

    /// Whether the name is one of those of the file at `path`: writing into either changes both.
    bool IsSameFile(const String& name, const String& path) const;

    /// Whether a file has the same content as the one at `path`. Reads both only as far as that takes.
    bool HasContentOf(const String& name, const String& path) const;

    /// Adds a line to the record, which is made when it is missing, and flushes it. A record of somebody else that
    /// can't be added to gets a second one beside it.
    void Record(const String& name, const Original& original, const CopiedContent& content);

    /// Takes away what a backup's mode (FileAttributes::mode) has beyond this one; on Windows gives it this one.
    void NarrowMode(const String& name, std::uint32_t mode) const;

    /// Deletes a backup; of a link the link itself. The record keeps its line until ForgetRemoved.
    void Remove(const String& name);

    /// Counts the recorded backups of the original that are missing among those that were removed, as after a clean
    /// that was killed. Only for an original that is locked: a run records a backup before it makes it.
    void NoteMissing(const Original& original);

    /// Takes the lines of removed backups out of the records, and deletes a record that has no line left. What goes
    /// wrong is passed over, as a line too many does no harm.
    void ForgetRemoved();

private:
    class OpenFiles;
    struct Line;
    class Lines;
    struct Source;

    std::optional<CopiedContent> ContentOf(const String& name) const;
    bool IsBelieved(const std::string& owner, const Original& original) const;
    bool Matches(const Line& line, const String& name, const Original& original) const;
    void LoadRecordOf(const std::string& owner);
    void Load(Source& source);
    void Refresh();
    bool OpenForAppending(const NativeString& record, const Original& original);
    void Append(const RecordedBackup& backup);
    void ForgetIn(const Source& source);
    NativeString PathOf(const NativeString& name) const;  // for texts

    String folder_;
    std::unique_ptr<OpenFiles> open_;
    std::vector<Source> sources_;   // the records that are looked at
    std::unique_ptr<Lines> lines_;  // of all of them
    std::set<String> removed_;      // PathKey of names, since the last ForgetRemoved
};

}  // namespace tessarine
