#pragma once

#include <cstdint>
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
/// A path that is a symbolic link stays one: the file it leads to is replaced. The new file has the old one's mode
/// and, as far as the system allows, its owner.
class ReplacementFile
{
public:
    /// What becomes of a path without a file: a failure, or a file with the mode of any new one.
    enum class Missing { Fails, IsMade };

    /// Makes the new file. Raises as SystemFileFailure tells (folder not writable, disk full, ...), 53 for a path with
    /// a NUL.
    explicit ReplacementFile(StringView path, Missing missing = Missing::Fails);

    /// Removes the new file unless it was committed.
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    void Write(std::span<const std::byte> bytes);

    /// Appends a range of another file without holding it in memory.
    void CopyFrom(const RandomAccessBytes& source, std::uint64_t offset, std::uint64_t length);

    std::uint64_t Position() const { return position_; }  ///< Bytes written so far.

    /// Flushes the new file, renames it over the old one and flushes the folder.
    void Commit();

private:
    void Flush();
    [[noreturn]] void Fail(int error, const char* attempt) const;

    std::string target_;
    std::string temporary_;
    int descriptor_ = -1;
    std::uint64_t position_ = 0;
    std::string pending_;  // small writes gathered into one
    bool committed_ = false;
};

/// Moves a file's modification time to now without touching its bytes; in a file of another owner that this process may
/// write, the access time goes with it. Raises as SystemFileFailure tells.
void TouchFile(StringView path);

}  // namespace tessarine
