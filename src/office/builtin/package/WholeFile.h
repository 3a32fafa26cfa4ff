#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "platform/RandomAccessFile.h"

namespace tessarine::builtin
{

/// All bytes of a file in memory, mapped through the descriptor that is open already: opening it once more would count
/// as a new access and move the file's access time. Copied where they can't be mapped.
class WholeFile
{
public:
    explicit WholeFile(const RandomAccessBytes& file);  ///< Raises what RandomAccessBytes::Read raises.
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    /// Lives as long as this object.
    std::span<const std::byte> Bytes() const { return bytes_; }

private:
    std::span<const std::byte> bytes_;  // of one of the two below
    void* mapped_ = nullptr;            // null when the bytes were copied
    std::vector<std::byte> copy_;       // empty when they were mapped
};

}  // namespace tessarine::builtin
