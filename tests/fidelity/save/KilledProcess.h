#pragma once

#include <cstddef>
#include <functional>

namespace tessarine::test
{

enum class Outcome { Killed, Finished, NotTraceable };

/// Runs `prepare` and then `save` in a process of their own, which is killed where the save enters or leaves a system
/// call for the `stop`th time.
Outcome KillSaveAt(std::size_t stop, const std::function<void()>& prepare, const std::function<void()>& save);

}  // namespace tessarine::test
