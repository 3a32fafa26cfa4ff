#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "files/FileDescriptor.h"
#include "files/FileState.h"
#include "files/OpenedFile.h"
#include "platform/NativePath.h"
#include "platform/String.h"

namespace tessarine
{

/// Bytes that can be read anywhere: a file, or memory in tests and fuzz targets.
class RandomAccessBytes
{
public:
    virtual ~RandomAccessBytes() = default;
    virtual std::uint64_t Size() const = 0;  ///< In bytes.

    /// Fills the whole buffer from `offset`. Raises `FileCorrupt` when the bytes end before it is full, `WriteFault`
    /// when reading fails.
    virtual void Read(std::uint64_t offset, std::span<std::byte> buffer) const = 0;

    /// The open file behind the bytes, NoFile for memory. With it the system can copy from file to file by itself.
    virtual NativeFile Descriptor() const { return NoFile; }

    /// The file behind the bytes as it was when it was opened, null for memory. With it a save notices what others have
    /// done to the file.
    virtual OpenedFile* Opened() { return nullptr; }
};

std::unique_ptr<RandomAccessBytes> BytesInMemory(std::span<const std::byte> bytes);  ///< Borrows `bytes`.

/// A file opened for reading. It is not locked against others (FileLock does that), and its access time stays as it was
/// where the system allows that.
class RandomAccessFile final : public RandomAccessBytes
{
public:
    using Identity = FileIdentity;  ///< Which file it is, whatever path it was opened by.

    /// Whether the file may be saved later. What others do to it is then noticed even where its times don't tell, for
    /// which a file that was touched a moment ago is read once (OpenedFile).
    enum class Use { Reading, Saving };

    /// Raises `SystemFileNotFound`, `SystemPathNotFound` (no such folder), `AccessDenied` (no permission, or not a
    /// file), `SharingViolation` (another process has locked it against readers), or another number of
    /// SystemFileFailure; `FileNotFound` for a path with a NUL. A lock of this process (FileLock) is no obstacle.
    explicit RandomAccessFile(StringView path, Use use = Use::Reading);
    RandomAccessFile(const RandomAccessFile&) = delete;
    RandomAccessFile& operator=(const RandomAccessFile&) = delete;

    std::uint64_t Size() const override { return size_; }  ///< As it was when the file was opened.
    OpenedFile* Opened() override { return &*opened_; }
    void Read(std::uint64_t offset, std::span<std::byte> buffer) const override;
    NativeFile Descriptor() const override { return file_.get(); }
    Identity Id() const { return opened_->State().identity; }  ///< Two paths to one file give the same.

    /// The file that a path names now; nothing when there is no such file.
    static std::optional<Identity> IdOf(StringView path);

private:
    NativeString path_;
    FileDescriptor file_;
    std::uint64_t size_ = 0;
    std::optional<OpenedFile> opened_;  // there as soon as the file is open
};

}  // namespace tessarine
