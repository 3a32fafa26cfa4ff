#pragma once

#include <unistd.h>

#include <utility>

namespace tessarine
{

/// Owns a POSIX file descriptor and closes it at its end.
class FileDescriptor
{
public:
    /// Takes over what a call such as `open` gave; a negative number is a descriptor that isn't open.
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    ~FileDescriptor() { Close(); }
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

    /// Closes the own descriptor and takes over the other's, which is not open afterwards.
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        Close();
        descriptor_ = std::exchange(other.descriptor_, -1);
        return *this;
    }

    bool IsOpen() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }  ///< Stays owned here; nobody else may close it.

    int Release() { return std::exchange(descriptor_, -1); }  ///< Gives it away without closing it.

    /// Closes now and tells whether the system reported an error, which is where a network file system may first do so.
    bool Close() { return descriptor_ < 0 || close(std::exchange(descriptor_, -1)) == 0; }

private:
    int descriptor_;
};

}  // namespace tessarine
