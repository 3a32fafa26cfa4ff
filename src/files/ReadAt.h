#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "files/FileDescriptor.h"

namespace tessarine
{

/// Reads once from `offset` (in bytes) of an open file, wherever it stands, and gives how many bytes came: fewer than
/// asked for only at the end of the file as a rule, 0 there. Nothing on failure, with the reason in errno.
std::optional<std::size_t> ReadSome(NativeFile file, std::uint64_t offset, std::span<std::byte> buffer);

/// The same until the buffer is full or the file ends.
std::optional<std::size_t> ReadAt(NativeFile file, std::uint64_t offset, std::span<std::byte> buffer);

}  // namespace tessarine
