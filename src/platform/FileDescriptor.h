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
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    bool IsOpen() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }  ///< Stays owned here; nobody else may close it.

    /// Closes now and tells whether the system reported an error, which is where a network file system may first do so.
    bool Close() { return descriptor_ < 0 || close(std::exchange(descriptor_, -1)) == 0; }

private:
    int descriptor_;
};

}  // namespace tessarine
