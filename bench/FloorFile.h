#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tessarine::bench
{

/// A file of a floor: the system's calls and nothing else. Raises std::runtime_error when one fails.
class File
{
public:
    File(const std::filesystem::path& path, int flags, mode_t mode = 0644)
        : descriptor_(open(path.c_str(), flags | O_CLOEXEC, mode))
    {
        if (descriptor_ < 0)
            throw std::runtime_error("can't open " + path.string());
    }
    ~File() { close(descriptor_); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    std::size_t Size() const { return static_cast<std::size_t>(lseek(descriptor_, 0, SEEK_END)); }

    void Read(std::size_t offset, std::string& bytes, std::size_t size) const
    {
        bytes.resize(size);
        if (pread(descriptor_, bytes.data(), size, static_cast<off_t>(offset)) != static_cast<ssize_t>(size))
            throw std::runtime_error("short read");
    }

    void Write(std::string_view bytes) const
    {
        if (write(descriptor_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
            throw std::runtime_error("short write");
    }

    void CopyFrom(const File& source, std::size_t offset, std::size_t size) const
    {
        auto at = static_cast<off64_t>(offset);
        while (size > 0) {
            const ssize_t copied = copy_file_range(source.descriptor_, &at, descriptor_, nullptr, size, 0);
            if (copied <= 0)
                throw std::runtime_error("copy failed");
            size -= static_cast<std::size_t>(copied);
        }
    }

    void Flush() const
    {
        if (fsync(descriptor_) != 0)
            throw std::runtime_error("flush failed");
    }

private:
    int descriptor_;
};

/// Puts a new file in the place of an old one; with `flush` its folder is flushed to the disk, too.
inline void PutInPlace(const std::filesystem::path& fresh, const std::filesystem::path& old, bool flush)
{
    std::filesystem::rename(fresh, old);
    if (flush)
        File(old.parent_path(), O_RDONLY | O_DIRECTORY).Flush();
}

}  // namespace tessarine::bench
