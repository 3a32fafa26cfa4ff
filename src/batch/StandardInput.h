#pragma once

#include <cstddef>
#include <limits>
#include <string>

namespace tessarine::batch
{

/// All bytes of standard input, up to its end; in a worker those that its run has read (GiveStandardInput). Raises
/// `DeviceIO` when it can't be read, and refuses (Refusal.h) more than `most` bytes.
std::string ReadStandardInput(std::size_t most = std::numeric_limits<std::size_t>::max());

/// Has ReadStandardInput give these bytes.
void GiveStandardInput(std::string bytes);

/// Has ReadStandardInput keep what it reads, so that workers can be given the same.
void KeepStandardInput();
const std::string& KeptStandardInput();  ///< Empty where nothing was read.

}  // namespace tessarine::batch
