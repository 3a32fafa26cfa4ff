#pragma once

#include <optional>

#include "platform/Failure.h"

namespace tessarine
{

/// Runs `body` and gives what it gives. What it fails with goes on to the caller, and is also left in `kept`, which is
/// empty after a success.
template <class Body>
auto KeepFailure(std::optional<Failure>& kept, Body&& body)
{
    kept.reset();
    try {
        return body();
        // Raised on with its own type, so that a caller's treatment sees what it would see without this.
    } catch (...) {
        kept = CurrentFailure();
        throw;
    }
}

}  // namespace tessarine
