#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "platform/RandomAccessFile.h"
#include "platform/String.h"

namespace tessarine
{

/// A new content for a file, all or nothing: written to a new file beside the old one, and only when it is complete
/// and on the disk renamed over it. Whatever happens before Commit has returned (failure, kill, power cut), the path
/// names the old file or the complete new one.
///
/// A path that is a symbolic link stays one: the file it leads to is replaced. As far as the system allows, the new
/// file has the old one's owner. Until Commit nobody but this process's user may read it.
class ReplacementFile
{
public:
    /// What becomes of a path without a file: a failure, or a file with the mode of any new one.
    enum class Missing { Fails, IsMade };

    /// The terms of a copy: the new file gets the original's mode bits.
    struct CopyOf {
        std::uint32_t mode;
    };

    /// Makes the new file of a save. An old file must be one that this process may write, and its mode goes over.
    /// Failures of this and of all below are of the system's family (SystemFileFailure): `AccessDenied` for a protected
    /// file or folder, `SystemDiskFull` and so on; but `FileNotFound` for a path with a NUL.
    explicit ReplacementFile(StringView path, Missing missing = Missing::Fails);

    /// Makes the new file of a copy. There need be no old file, and one that is read-only is replaced all the same:
    /// whoever backs up a read-only file twice has a read-only backup in the way. Failures of this and of all below are
    /// of the classic family (ClassicFileFailure).
    ReplacementFile(StringView path, CopyOf original);

    /// Removes the new file unless it was committed.
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    void Write(std::span<const std::byte> bytes);  ///< In small pieces, too: they are gathered.

    /// Appends a range of another file without holding it in memory.
    void CopyFrom(const RandomAccessBytes& source, std::uint64_t offset, std::uint64_t length);

    std::uint64_t Position() const { return position_; }  ///< Bytes written so far.

    /// Gives the new file its owner and mode, flushes it, renames it over the old one and flushes the folder. A folder
    /// that can't be flushed is no failure, as the new file is in place by then.
    void Commit();

private:
    class NewFile;
    struct Owner {
        std::uint32_t user;
        std::uint32_t group;
    };

    ReplacementFile(StringView path, bool isCopy);  // what both kinds share
    void MakeNewFile();
    void Flush();
    [[noreturn]] void Fail(int error, const char* attempt) const;  // of the family that the constructor tells

    bool isCopy_;
    std::string target_;          // what all links lead to
    std::optional<Owner> owner_;  // of the old file, if there is one
    std::uint32_t mode_ = 0;      // of the new file
    std::unique_ptr<NewFile> newFile_;
    std::uint64_t position_ = 0;
    std::string pending_;  // small writes gathered into one
};

/// Moves a file's modification time to now without touching its bytes; in a file of another owner that this process may
/// write, the access time goes with it. Raises as SystemFileFailure tells, `FileNotFound` for a path with a NUL.
void TouchFile(StringView path);

}  // namespace tessarine
