#pragma once

#include <cstdint>
#include <optional>

#include "files/FileState.h"

namespace tessarine
{

/// A file as it was when it was opened, to notice later what others have done to it since.
///
/// The times that a file system keeps are as coarse as its clock. A file that was touched within one tick of being
/// opened can be touched again without a trace in its state; of such a file the content's checksum is kept as well.
class OpenedFile
{
public:
    /// Takes the state of an open file, and reads its content where the state alone doesn't tell. Borrows it. A file
    /// that can't be read counts as changed.
    explicit OpenedFile(NativeFile file);

    /// The same from a state that was read already, and the time right before that (Clock).
    OpenedFile(NativeFile file, const FileState& state, std::int64_t clock);

    /// The time by the clock that the system takes the times of files from, in nanoseconds since 1970.
    static std::int64_t Clock();

    /// In which steps that clock moves, in nanoseconds.
    static std::int64_t ClockStep();

    NativeFile Descriptor() const { return file_; }
    const FileState& State() const { return state_; }  ///< Of the open file.

    /// What the file's path has to lead to as long as nobody else has changed it: the state of the open file, and after
    /// a save of one's own that of the new one.
    const FileState& Expected() const { return expected_; }

    /// True when the state at opening left room for changes that it doesn't show.
    bool IsRacy() const { return isRacy_; }

    /// True when the open file is as it was. Reads the content of a racy file. False also when the file can't be read
    /// any more, and for a racy one of more than 4 GiB, which nothing here saves anyway.
    bool IsUnchanged() const;

    /// The part of IsUnchanged that concerns the content of a racy file alone; true for all others.
    bool HasSameContent() const { return !isRacy_ || (checksum_ && ChecksumNow() == checksum_); }

    /// This process itself has touched the file, or put one of this state in its place.
    void NoteOwnSave(const FileState& saved);

private:
    std::optional<std::uint32_t> ChecksumNow() const;

    NativeFile file_;
    FileState state_;
    FileState expected_;
    bool isRacy_ = false;
    std::optional<std::uint32_t> checksum_;  // of the content of a racy file, if it can be read
};

}  // namespace tessarine
