#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "platform/String.h"

namespace tessarine
{

/// Bytes that can be read anywhere: a file, or memory in tests and fuzz targets.
class RandomAccessBytes
{
public:
    virtual ~RandomAccessBytes() = default;
    virtual std::uint64_t Size() const = 0;

    /// Fills the whole buffer from `offset`. Raises -2147023504 when the bytes end before, -2147024867 when reading
    /// fails.
    virtual void Read(std::uint64_t offset, std::span<std::byte> buffer) const = 0;

    /// The file descriptor behind the bytes, -1 for memory; lets a copy stay inside the system.
    virtual int Descriptor() const { return -1; }
};

std::unique_ptr<RandomAccessBytes> BytesInMemory(std::span<const std::byte> bytes);  ///< Borrows `bytes`.

/// A file opened for reading. It is not locked against others, and its access time stays as it was where the system
/// allows that.
class RandomAccessFile final : public RandomAccessBytes
{
public:
    /// Which file it is, whatever path it was opened by.
    struct Identity {
        std::uint64_t device = 0;
        std::uint64_t file = 0;
        bool operator==(const Identity&) const = default;
    };

    /// Raises -2147024894 (no such file), -2147024893 (no such folder), -2147024891 (no permission, or a folder),
    /// -2147024864 (another process holds a lock on it).
    explicit RandomAccessFile(StringView path);
    ~RandomAccessFile() override;
    RandomAccessFile(const RandomAccessFile&) = delete;
    RandomAccessFile& operator=(const RandomAccessFile&) = delete;

    std::uint64_t Size() const override { return size_; }
    void Read(std::uint64_t offset, std::span<std::byte> buffer) const override;
    int Descriptor() const override { return descriptor_; }
    Identity Id() const { return identity_; }

    /// The file that a path names now; nothing when it names none.
    static std::optional<Identity> IdOf(StringView path);

private:
    std::string path_;
    int descriptor_ = -1;
    std::uint64_t size_ = 0;
    Identity identity_;
};

}  // namespace tessarine
