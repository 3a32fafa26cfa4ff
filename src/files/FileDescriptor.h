#pragma once

#include <utility>

namespace tessarine
{

/// What the system calls an open file: a descriptor, on Windows a handle. Members that take one borrow it.
#ifdef _WIN32
using NativeFile = void*;
inline constexpr NativeFile NoFile = nullptr;
#else
using NativeFile = int;
inline constexpr NativeFile NoFile = -1;
#endif

/// Owns an open file and closes it at its end.
class FileDescriptor
{
public:
    FileDescriptor() = default;  ///< Isn't open.

    /// Takes over what a call such as `open` gave; what such a call gives on failure isn't open.
    explicit FileDescriptor(NativeFile file);
    ~FileDescriptor() { Close(); }
    FileDescriptor(FileDescriptor&& other) noexcept : file_(other.Release()) {}

    /// Closes the own file and takes over the other's, which is not open afterwards.
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        Close();
        file_ = other.Release();
        return *this;
    }

    bool IsOpen() const { return file_ != NoFile; }
    NativeFile get() const { return file_; }  ///< Stays owned here; nobody else may close it.

    NativeFile Release() { return std::exchange(file_, NoFile); }  ///< Gives it away without closing it.

    /// Closes now and tells whether the system reported an error, which is where a network file system may first do so.
    bool Close();

private:
    NativeFile file_ = NoFile;
};

}  // namespace tessarine
