#pragma once

#include "files/FileDescriptor.h"
#include "files/FileState.h"
#include "platform/String.h"

namespace tessarine
{

/// Keeps a file from other runs, and from other programs that care, from before it is read until after it was saved.
///
/// Locks are advice here: nothing stops a program that doesn't ask (on Windows the lock is on bytes far beyond the end
/// of the file, for the same reason: PowerPoint has to open what a run has locked). What such a program does to the
/// file is noticed when it is saved (ReplacementFile). A file that can't be opened isn't locked, and opening it will
/// tell why; nor is one on a file system without locks, or on a Windows share, whose locks would keep out this process
/// itself.
///
/// A save gives the file of the new content the lock of the old one, so that the path stays locked until the end.
class FileLock
{
public:
    /// Locks the file that a path leads to. Raises `SharingViolation` and nothing else, with a text that says what
    /// stands in the way:
    /// - "... is in use by another run": a FileLock of another process, or of this one, holds it;
    /// - "... is in use by another program": another lock is on it, of the whole file or for writing; on Windows also
    ///   when a program has it open and doesn't let others replace it;
    /// - "... is in use: ... says that another program has it open": a lock file (IsLockFileName) stands beside it;
    /// - "... is replaced again and again": the path never led to the file that was locked a moment before.
    explicit FileLock(StringView path);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    bool IsHeld() const { return file_.IsOpen(); }  ///< False where nothing could be locked.

    /// True when this process holds the file, so that a lock on it is no obstacle.
    static bool IsHeldHere(const FileIdentity& file);

    /// True when this process holds a lock that was taken by this path (spelled the same), but on another file:
    /// somebody has put `file` there since, or another folder on the way to it.
    static bool IsOnAnother(StringView path, const FileIdentity& file);

    /// The lock that this process holds on `old`, if there is one, goes over to another file, which is
    /// locked already (TryToLock). Without such a lock that file is closed.
    static void GiveTo(FileDescriptor newFile, const FileIdentity& identity, const FileIdentity& old);

private:
    void Hold(FileDescriptor file, const FileIdentity& identity, StringView path);

    FileDescriptor file_;  // the lock lasts as long as it is open
    FileIdentity identity_;
    String path_;
};

enum class LockAttempt {
    Locked,
    HeldByARun,      ///< By a process of this program.
    HeldByAProgram,  ///< By any other.
    NeedsWriting,    ///< The file system locks only files that are open for writing, as this one isn't.
    Impossible       ///< The file system has no locks.
};

/// Locks an open file against all others and marks it as locked by a run, until it is closed. Waits
/// a few hundredths of a second for one who merely looks whether the file is locked.
LockAttempt TryToLock(NativeFile file);

/// Puts the mark of a run on an open file, by which others tell our lock from that of any program, until it is closed.
/// Where that can't be, the lock looks like any other. On Windows the lock itself is the mark.
void MarkAsOurs(NativeFile file);

/// Whether others would mind that an open file is read: `Locked` when nobody holds a lock against that, or only
/// this process does. Leaves no lock.
LockAttempt LookAtLocks(NativeFile file, const FileIdentity& identity);

/// True for the name (without folder) of a file that programs put beside a document while they have it open:
/// "~$report.pptx" and ".~lock.report.pptx#". Such a file is never a presentation itself, whatever its extension.
bool IsLockFileName(StringView name);

}  // namespace tessarine
