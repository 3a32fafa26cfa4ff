#pragma once

#include <cstddef>
#include <limits>
#include <string>

namespace tessarine::batch
{

/// All bytes of standard input, up to its end. Raises `DeviceIO` when it can't be read, and refuses (Refusal.h) more
/// than `most` bytes.
std::string ReadStandardInput(std::size_t most = std::numeric_limits<std::size_t>::max());

}  // namespace tessarine::batch
