#pragma once

#include <cstdint>

#include "files/FileDescriptor.h"

namespace tessarine
{

/// Makes sure that an open file can grow to a size without the disk running full, as far as the file system can promise
/// that. The file's content and size stay. False when there is no room, with the reason in errno.
bool HasRoomFor(NativeFile file, std::uint64_t size);

/// Puts the whole content of an open file into another one, from its beginning to its end, and flushes that to the
/// disk. False at the first trouble, with the reason in errno: the file is then half written.
bool WriteOver(NativeFile file, NativeFile content, std::uint64_t size);

}  // namespace tessarine
