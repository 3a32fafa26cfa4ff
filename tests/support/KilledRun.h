#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/String.h"

namespace tessarine
{

/// Does something in a copy of this process that has to end with KillThisProcess. Raises std::runtime_error when it
/// came to another end.
void InKilledProcess(const std::function<void()>& action);

[[noreturn]] void KillThisProcess();

/// A run that is killed while it has made a file writable: the file stays so, and the run's journal is left.
void LeaveWritable(const String& path);

/// The texts that RecoverFromKilledRuns gives.
std::vector<std::string> TextsOfRecovery();

}  // namespace tessarine
