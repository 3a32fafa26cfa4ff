#pragma once

#include <filesystem>
#include <memory>

#include "standin/CallWatch.h"

namespace tessarine::standin
{

/// Names of the files by which a stand-in and a test talk, in the folder that the stand-in is registered with.
inline constexpr const char* OrdersFile = "orders";  ///< Lines of Orders.h, from the test.
inline constexpr const char* LogFile = "log";        ///< From the stand-in, a line each: what was called.

/// Writes every call into the log of a folder, and carries out the orders that stand there. A line begins with a blank
/// for a call, with "?" for the lookup of a name, and with "#" for the number of a process that begins.
std::shared_ptr<CallWatch> WatchIn(const std::filesystem::path& folder);

}  // namespace tessarine::standin
