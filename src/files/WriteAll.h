#pragma once

#include <string_view>

#include "files/FileDescriptor.h"

namespace tessarine
{

/// Writes all bytes where an open file stands, going on after an interruption or a short write. One call of the system
/// as a rule. False at the first trouble, with the reason in errno: some of the bytes may be written then.
bool WriteAll(NativeFile file, std::string_view bytes);

}  // namespace tessarine
