#pragma once

#include <cstdint>
#include <string>

namespace tessarine::bench
{

/// Processor seconds of this process and of the children that it has waited for, user and system.
double ProcessorSeconds();

/// The most memory that this process, or a child that it has waited for, has held at once since its start, in KiB.
std::int64_t PeakKibibytes();

/// Starts this program anew with the one argument `--peak=<name>` and reads the number that it prints; a
/// process of its own for each case, because a peak never goes down again. 0 when the child fails.
std::int64_t PeakKibibytesOfChild(const std::string& name);

}  // namespace tessarine::bench
