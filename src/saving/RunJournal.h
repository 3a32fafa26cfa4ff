#pragma once

#include <memory>
#include <vector>

#include "files/FileDescriptor.h"
#include "files/Files.h"
#include "platform/NativePath.h"
#include "platform/String.h"
#include "saving/FileDateTime.h"

/// Small files in ApplicationDataFolder that tell the next start of the program what a process had changed for a while
/// only, or had half written, when it was killed. Each is there only while it is needed, and is locked by the process
/// that wrote it for as long as that lives.
namespace tessarine
{

class JournalFile;

/// The mode and the dates of the file that a run is at, for as long as the run has them changed. A run that is killed
/// leaves them here, and RecoverFromKilledRuns puts them back.
///
/// What is noted survives the death of the process, not a power cut: noting it costs no flush.
class RunJournal
{
public:
    RunJournal();
    ~RunJournal();  ///< Ends what was begun and removes the journal's file.
    RunJournal(const RunJournal&) = delete;
    RunJournal& operator=(const RunJournal&) = delete;

    /// Notes what a file has to have again, before it is changed. Times that aren't valid are not put back. Ends an
    /// entry that was begun before. Raises as ClassicFileFailure tells when it can't be noted; nothing is noted then.
    void Begin(StringView path, const FileAttributes& attributes, const FileTimes& times);

    /// The file has its mode and dates again, or is to stay as it is. Never raises; does nothing when nothing was
    /// begun.
    void End() noexcept;

private:
    class NotedFile;

    std::unique_ptr<NotedFile> noted_;
};

/// Tells the journals of this process that the file open as `newFile`, complete and with its last write behind it, is
/// about to take the place of `target`: it is the one that then gets mode and dates back. To be called right before the
/// rename. Costs nothing while no journal has begun an entry. Never raises: what can't be noted is not put back.
void NoteReplacement(const NativeString& target, NativeFile newFile) noexcept;

/// The same for a file that stays in its place and gets another date: `file` is open, and `lastWrite` is the date that
/// it is about to get, or has got.
void NoteNewDate(NativeFile file, const timespec& lastWrite) noexcept;

/// A write into an old file itself, which a crash leaves half done. Once it is noted, the next start of the program
/// completes it from a copy of the whole new content.
class InPlaceWrite
{
public:
    /// Notes the write before its first byte, on the disk itself. `oldFile` is the file open for reading (at least),
    /// which is read once from its beginning to its end and stays open until End; `target` is its path without links,
    /// and `copy` the path of a temporary file with the complete new content, flushed. Both files are read once.
    ///
    /// The copy gets another name in its folder, see Copy, so that RemoveLeftovers does not take it. Raises as
    /// SystemFileFailure tells when this can't be done; the file must not be written into then, and the copy has its
    /// old name.
    InPlaceWrite(const NativeString& target, NativeFile oldFile, const NativeString& copy);

    /// Without End before it, leaves the copy and what was noted to the next start.
    ~InPlaceWrite();
    InPlaceWrite(const InPlaceWrite&) = delete;
    InPlaceWrite& operator=(const InPlaceWrite&) = delete;

    /// Path of the copy while the write goes: where the new content lies when the write fails half way.
    const NativeString& Copy() const;

    /// The old file holds the new content, flushed, with its last write behind it. Removes the copy. Never raises, and
    /// does nothing a second time.
    void End() noexcept;

private:
    NativeString copy_;
    NativeFile oldFile_;
    std::unique_ptr<JournalFile> journal_;
};

/// What RecoverFromKilledRuns did to a file, or why it could not.
struct RecoveredFile {
    String path;
    String text;  ///< One sentence for people, without the path: "a run that was killed had …".
};

/// Puts right what processes that have died left behind: mode and dates of the file that a run was at, and writes into
/// a file itself. Touches a file only while it is the one that the journal knows, whole or half written; of one that
/// somebody else has changed since, the text says so. A journal of a process that lives is left alone, and so is one
/// whose file is in use: the next start takes it. What isn't a journal of this user (a link, a pipe, another owner's
/// file) is left alone, a damaged one is removed.
///
/// Gives one element for each file that was put right or given up, in no order. Never raises.
std::vector<RecoveredFile> RecoverFromKilledRuns();

/// The same in the middle of a run, for what was killed beside it since its start. To be called for a file once this
/// process has locked it, before its mode and dates are looked at: they may be those that the killed run has set.
std::vector<RecoveredFile> RecoverFromRunsKilledMeanwhile();

}  // namespace tessarine
