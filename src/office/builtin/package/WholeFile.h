#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "files/RandomAccessFile.h"

namespace tessarine::builtin
{

/// All bytes of a file in memory. Read and not mapped: touching a mapped file that another program has cut meanwhile
/// ends the whole process. Read through the descriptor that is open already, because opening the file once more would
/// count as a new access and move its access time.
class WholeFile
{
public:
    explicit WholeFile(const RandomAccessBytes& file);  ///< Raises what RandomAccessBytes::Read raises.

    /// Lives as long as this object.
    std::span<const std::byte> Bytes() const { return bytes_; }

private:
    std::vector<std::byte> bytes_;
};

}  // namespace tessarine::builtin
